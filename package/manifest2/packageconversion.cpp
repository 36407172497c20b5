// SPDX-License-Identifier: Apache-2.0
#include <package/languagecodes.hpp>
#include <package/manifest2/packageinfo2.hpp>
#include <package/manifest2/sectionaccess.hpp>
#include <package/packageinfo.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/xml/names.hpp>

namespace vesk
{
namespace
{
template <typename Item>
void append(std::list<Item>& list, const std::vector<Item>& items)
{
  list.insert(list.end(), items.begin(), items.end());
}
} // namespace

PackageInfo::PackageInfo(const PackageInfo2& info) : PackageInfo()
{
  using Texts = std::map<std::string, std::string>;
  using Requirements = std::pair<std::vector<RobotRequirement>, std::vector<MirelRequirement>>;
  const Values& sections = info.sections;
  const ManifestNames& names = manifestNames();
  record->uuid = info.uuid;
  record->version = info.version;
  record->author = info.author;
  record->channel = info.channel;
  record->organization = info.organization;
  record->date = info.date;
  record->typeVersion = info.typeVersion;
  record->installer = info.installer;
  record->path = info.path;
  record->langToName = *ValueAt<Texts>(sections, names.names);
  record->langToDesc = *ValueAt<Texts>(sections, names.descriptions);
  append(record->services, *ValueAt<std::vector<PackageService>>(sections, names.services));
  append(record->executableFiles,
         *ValueAt<std::vector<std::string>>(sections, names.executableFiles));
  const ValueAt<Requirements> requirements(sections, names.requirements);
  append(record->robotRequirements, (*requirements).first);
  append(record->mirelRequirements, (*requirements).second);
  const ValueAt<std::vector<std::string>> languages(sections, names.supportedLanguages);
  LanguageAppender supported(record->supportedLanguages);
  for (const std::string& language : *languages)
  {
    supported.append(language);
  }
  // Of the contents, web has no place in a package.
  const ValueAt<Values> contents(sections, names.contents);
  append(record->behaviors, *ValueAt<std::vector<BehaviorInfo>>(*contents, keys::behaviors));
  append(record->dialogs, *ValueAt<std::vector<DialogInfo>>(*contents, keys::dialogs));
  append(record->languages, *ValueAt<std::vector<LanguageInfo>>(*contents, keys::languages));
}

} // namespace vesk
