// SPDX-License-Identifier: Apache-2.0
#include <package/behaviorinfo_p.hpp>
#include <package/languageinfo_p.hpp>
#include <package/packageinfo.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/rootattributes.hpp>
#include <package/xml/names.hpp>
#include <package/xml/serializing.hpp>
#include <package/xml/text.hpp>
#include <package/xml/writing.hpp>

#include <QDomDocument>
#include <QFile>

namespace vesk
{
namespace
{
// The two differ, and users compare what they write with what was written before.
constexpr int fileIndent = 2;
constexpr int contentIndent = 1;

void writeLanguages(QDomDocument& doc, QDomElement& package, const XmlName& groupTag,
                    const std::list<std::string>& languages)
{
  if (languages.empty())
  {
    return;
  }
  QDomElement group = appendElement(doc, package, groupTag);
  for (const std::string& language : languages)
  {
    QDomElement item = appendElement(doc, group, manifestNames().language);
    addTextNode(doc, item, language);
  }
}

void writeContents(QDomDocument& doc, QDomElement& package, const PackageInfo& info)
{
  QDomElement contents = appendElement(doc, package, manifestNames().contents);
  for (const BehaviorInfo& behavior : info.behaviors())
  {
    recordOf(behavior).saveToManifest(doc, contents);
  }
  for (const DialogInfo& dialog : info.dialogs())
  {
    dialog.saveToManifest(doc, contents);
  }
  for (const LanguageInfo& language : info.languages())
  {
    recordOf(language).saveToManifest(doc, contents);
  }
}

void writeRequirements(QDomDocument& doc, QDomElement& package, const PackageInfoPrivate& record)
{
  if (record.mirelRequirements.empty() && record.robotRequirements.empty())
  {
    return;
  }
  const ManifestNames& names = manifestNames();
  QDomElement requirements = appendElement(doc, package, names.requirements);
  for (const MirelRequirement& software : record.mirelRequirements)
  {
    QDomElement element = appendElement(doc, requirements, names.mirelRequirement);
    addAttribute(element, names.minVersion, software.minVersion);
    addAttribute(element, names.maxVersion, software.maxVersion);
  }
  for (const RobotRequirement& robot : record.robotRequirements)
  {
    QDomElement element = appendElement(doc, requirements, names.robotRequirement);
    addAttribute(element, names.model, robot.model);
    addAttribute(element, names.minHeadVersion, robot.minHeadVersion);
    addAttribute(element, names.maxHeadVersion, robot.maxHeadVersion);
    addAttribute(element, names.minBodyVersion, robot.minBodyVersion);
    addAttribute(element, names.maxBodyVersion, robot.maxBodyVersion);
  }
}

void writeServices(QDomDocument& doc, QDomElement& package,
                   const std::list<PackageService>& services)
{
  if (services.empty())
  {
    return;
  }
  const ManifestNames& names = manifestNames();
  QDomElement group = appendElement(doc, package, names.services);
  for (const PackageService& service : services)
  {
    QDomElement element = appendElement(doc, group, names.service);
    addAttribute(element, names.autorun, service.autoRun ? "true" : "false");
    addAttribute(element, names.name, service.name);
    addAttribute(element, names.execStart, service.execStart);
  }
}

void writeExecutableFiles(QDomDocument& doc, QDomElement& package,
                          const std::list<std::string>& files)
{
  if (files.empty())
  {
    return;
  }
  const ManifestNames& names = manifestNames();
  QDomElement group = appendElement(doc, package, names.executableFiles);
  for (const std::string& path : files)
  {
    QDomElement element = appendElement(doc, group, names.file);
    addAttribute(element, names.path, path);
  }
}

std::string manifestOf(const PackageInfo& package, int indent)
{
  QDomDocument document;
  recordOf(package).saveToXmlDocument(document, &package);
  return serialize(document, indent);
}
} // namespace

bool PackageInfo::saveToManifestFile(const std::string& path) const
{
  QFile file(toQString(path));
  return saveToManifestFile(file);
}

bool PackageInfo::saveToManifestFile(QFile& file) const
{
  const std::string manifest = manifestOf(*this, fileIndent);
  if (!file.open(QIODevice::WriteOnly))
  {
    return false;
  }
  file.write(manifest.data(), static_cast<qint64>(manifest.size()));
  file.close();
  return true;
}

std::string PackageInfo::saveToManifestContent() const { return manifestOf(*this, contentIndent); }

void PackageInfoPrivate::saveToXmlDocument(QDomDocument& doc, const PackageInfo* package) const
{
  const ManifestNames& names = manifestNames();
  doc.appendChild(doc.createProcessingInstruction(
      QStringLiteral("xml"), QStringLiteral("version='1.0' encoding='UTF-8'")));
  QDomElement root = appendElement(doc, doc, names.package);
  for (const auto& attribute : rootAttributes<PackageInfoPrivate>)
  {
    addAttribute(root, names.*attribute.name, this->*attribute.member);
  }
  addLocalizedDataElement(doc, root, langToName, names.names, names.name, names.lang);
  addLocalizedDataElement(doc, root, langToDesc, names.descriptions, names.description, names.lang);
  writeLanguages(doc, root, names.supportedLanguages, supportedLanguages);
  writeLanguages(doc, root, names.descriptionLanguages, descriptionLanguages);
  writeContents(doc, root, *package);
  writeRequirements(doc, root, *this);
  writeServices(doc, root, services);
  writeExecutableFiles(doc, root, executableFiles);
}

} // namespace vesk
