// SPDX-License-Identifier: Apache-2.0
#include <package/behaviorinfo_p.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/languageinfo_p.hpp>
#include <package/manifest2/sectionaccess.hpp>
#include <package/manifest2/sectionreaders.hpp>
#include <package/sections.hpp>

namespace vesk
{

std::map<std::string, std::string> translationsFromXmlNode(const XmlNode& node)
{
  std::map<std::string, std::string> texts;
  readLocalizedTexts(node, texts);
  return texts;
}

std::vector<PackageService> servicesFromXmlNode(const XmlNode& node)
{
  const auto serviceOrNumberedFrom = [](const XmlNode& element)
  {
    PackageService service = serviceFrom(element);
    service.autoRun = service.autoRun || element.attribute(manifestNames().autorun) == "1";
    return service;
  };
  std::vector<PackageService> services;
  readItems(node, manifestNames().service, services, serviceOrNumberedFrom);
  return services;
}

std::vector<std::string> executableFilesFromXmlNode(const XmlNode& node)
{
  std::vector<std::string> files;
  readItems(node, manifestNames().file, files, executableFileFrom);
  return files;
}

std::pair<std::vector<RobotRequirement>, std::vector<MirelRequirement>>
requirementsFromXmlNode(const XmlNode& node)
{
  std::pair<std::vector<RobotRequirement>, std::vector<MirelRequirement>> requirements;
  readItems(node, manifestNames().robotRequirement, requirements.first, robotRequirementFrom);
  readItems(node, manifestNames().mirelRequirement, requirements.second, mirelRequirementFrom);
  return requirements;
}

std::vector<std::string> textFromXmlNode(const XmlNode& node)
{
  std::vector<std::string> texts;
  for (const XmlNode& child : Children(node))
  {
    texts.push_back(child.text());
  }
  return texts;
}

namespace
{
template <typename Item>
void store(std::map<std::string, AnyValue>& contents, const char* key, std::vector<Item> items)
{
  if (!items.empty())
  {
    contents[key] = std::move(items);
  }
}
} // namespace

std::map<std::string, AnyValue> contentsFromXmlNode(const XmlNode& node)
{
  std::map<std::string, AnyValue> contents;
  std::vector<BehaviorInfo> behaviors;
  std::vector<DialogInfo> dialogs;
  std::vector<LanguageInfo> languages;
  readContents(node, behaviors, dialogs, languages,
               [&contents](const XmlNode& child)
               {
                 if (child.isNamed(manifestNames().webContent))
                 {
                   contents[keys::web] = webFromXmlNode(child);
                 }
               });
  store(contents, keys::behaviors, std::move(behaviors));
  store(contents, keys::languages, std::move(languages));
  store(contents, keys::dialogs, std::move(dialogs));
  return contents;
}

WebInfo webFromXmlNode(const XmlNode& node) { return {node.attribute(manifestNames().path)}; }

} // namespace vesk
