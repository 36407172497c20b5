// SPDX-License-Identifier: Apache-2.0
#include <package/languagecodes.hpp>
#include <package/packageinfo.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/trimming.hpp>

#include <algorithm>
#include <utility>

namespace vesk
{
namespace
{
void addWithoutDuplicates(std::list<std::string>& languages, const std::string& language)
{
  if (std::find(languages.begin(), languages.end(), language) == languages.end())
  {
    languages.push_back(language);
  }
}
} // namespace

PackageInfo::PackageInfo() : record(std::make_unique<PackageInfoPrivate>()) {}

PackageInfo::PackageInfo(const PackageInfo& other)
    : record(std::make_unique<PackageInfoPrivate>(*other.record))
{}

PackageInfo::PackageInfo(PackageInfo&& other) noexcept = default;

PackageInfo PackageInfo::operator=(const PackageInfo& other)
{
  PackageInfo copy(other); // first: when memory runs out, nothing is assigned
  assignRecord(record, other.record);
  return copy;
}

PackageInfo::~PackageInfo() = default;

const std::string& PackageInfo::uuid() const { return record->uuid; }

void PackageInfo::setUuid(const std::string& uuid) { record->uuid = uuid; }

const std::string& PackageInfo::version() const { return record->version; }

void PackageInfo::setVersion(const std::string& version) { record->version = version; }

const std::string& PackageInfo::author() const { return record->author; }

void PackageInfo::setAuthor(const std::string& author) { record->author = author; }

const std::string& PackageInfo::organization() const { return record->organization; }

void PackageInfo::setOrganization(const std::string& organization)
{
  record->organization = organization;
}

const std::string& PackageInfo::date() const { return record->date; }

void PackageInfo::setDate(const std::string& date) { record->date = date; }

const std::string& PackageInfo::typeVersion() const { return record->typeVersion; }

void PackageInfo::setTypeVersion(const std::string& typeVersion)
{
  record->typeVersion = typeVersion;
}

const std::string& PackageInfo::channel() const { return record->channel; }

void PackageInfo::setChannel(const std::string& channel) { record->channel = channel; }

const std::string& PackageInfo::installer() const { return record->installer; }

void PackageInfo::setInstaller(const std::string& installer) { record->installer = installer; }

const std::string& PackageInfo::path() const { return record->path; }

void PackageInfo::setPath(const std::string& path) { record->path = path; }

const std::string& PackageInfo::name(const std::string& lang) const
{
  static const std::string none;
  const auto entry = record->langToName.find(lang);
  return entry == record->langToName.end() ? none : entry->second;
}

const std::map<std::string, std::string>& PackageInfo::names() const { return record->langToName; }

void PackageInfo::setName(const std::string& name, const std::string& lang)
{
  record->langToName[lang] = name;
}

void PackageInfo::clearNames() { record->langToName.clear(); }

const std::string& PackageInfo::description(const std::string& lang) const
{
  static const std::string none;
  const auto entry = record->langToDesc.find(lang);
  return entry == record->langToDesc.end() ? none : entry->second;
}

const std::map<std::string, std::string>& PackageInfo::descriptions() const
{
  return record->langToDesc;
}

void PackageInfo::setDescription(std::string description, const std::string& lang)
{
  record->langToDesc[lang] = std::move(description);
}

const std::list<PackageService>& PackageInfo::services() const { return record->services; }

void PackageInfo::addService(const PackageService& service) { record->services.push_back(service); }

void PackageInfo::clearServices() { record->services.clear(); }

const std::list<std::string>& PackageInfo::executableFiles() const
{
  return record->executableFiles;
}

void PackageInfo::addExecutableFile(const std::string& path)
{
  record->executableFiles.push_back(path);
}

const std::list<RobotRequirement>& PackageInfo::robotRequirements() const
{
  return record->robotRequirements;
}

void PackageInfo::addRobotRequirement(const RobotRequirement& requirement)
{
  record->robotRequirements.push_back(requirement);
}

void PackageInfo::clearRobotRequirements() { record->robotRequirements.clear(); }

const std::list<MirelRequirement>& PackageInfo::mirelRequirements() const
{
  return record->mirelRequirements;
}

void PackageInfo::addMirelRequirement(const MirelRequirement& requirement)
{
  record->mirelRequirements.push_back(requirement);
}

void PackageInfo::clearMirelRequirements() { record->mirelRequirements.clear(); }

const std::list<BehaviorInfo>& PackageInfo::behaviors() const { return record->behaviors; }

std::list<BehaviorInfo>& PackageInfo::behaviors() { return record->behaviors; }

bool PackageInfo::hasBehavior() const { return !record->behaviors.empty(); }

void PackageInfo::addBehavior(const BehaviorInfo& behavior)
{
  record->behaviors.push_back(behavior);
}

void PackageInfo::clearBehaviors() { record->behaviors.clear(); }

const std::list<DialogInfo>& PackageInfo::dialogs() const { return record->dialogs; }

void PackageInfo::addDialog(const DialogInfo& dialog) { record->dialogs.push_back(dialog); }

void PackageInfo::clearDialogs() { record->dialogs.clear(); }

const std::list<LanguageInfo>& PackageInfo::languages() const { return record->languages; }

void PackageInfo::addLanguage(const LanguageInfo& language)
{
  record->languages.push_back(language);
}

const std::list<std::string>& PackageInfo::supportedLanguages() const
{
  return record->supportedLanguages;
}

void PackageInfo::addSupportedLanguage(const std::string& language)
{
  addWithoutDuplicates(record->supportedLanguages, language);
}

void PackageInfo::removeSupportedLanguage(const std::string& language)
{
  record->supportedLanguages.remove(language);
}

void PackageInfo::clearSupportedLanguages() { record->supportedLanguages.clear(); }

const std::list<std::string>& PackageInfo::descriptionLanguages() const
{
  return record->descriptionLanguages;
}

void PackageInfo::addDescriptionLanguage(const std::string& language)
{
  addWithoutDuplicates(record->descriptionLanguages, language);
}

void PackageInfo::removeDescriptionLanguage(const std::string& language)
{
  record->descriptionLanguages.remove(language);
}

void PackageInfo::clearDescriptionLanguages() { record->descriptionLanguages.clear(); }

void PackageInfo::trimExtraInfo() { record->trimExtraInfo(); }

void PackageInfoPrivate::trimExtraInfo()
{
  trimMembers(*this, descriptionLanguages, supportedLanguages);
  for (BehaviorInfo& behavior : behaviors)
  {
    behavior.trimExtraInfo(descriptionLanguages, supportedLanguages);
  }
}

} // namespace vesk
