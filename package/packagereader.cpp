// SPDX-License-Identifier: Apache-2.0
#include <package/behaviorinfo_p.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/languagecodes.hpp>
#include <package/languageinfo_p.hpp>
#include <package/packageinfo.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/rootattributes.hpp>
#include <package/sections.hpp>
#include <package/xml/manifesttree.hpp>
#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>
#include <package/xml/text.hpp>
#include <vesk/log.hpp>

#include <QFile>
#include <QScopeGuard>

namespace vesk
{
namespace
{
void logError(const std::string& text, const char* function)
{
  log::write(log::addCategory("veskpackage"), log::Level::Error, text, function);
}

void logSyntaxError(const std::string& source, const LoadError& error, const char* function)
{
  logError("Syntax error in " + source + " at line " + std::to_string(error.line) + ", column " +
               std::to_string(error.column) + ": " + error.message,
           function);
}

void readLanguages(const XmlNode& section, LanguageAppender& appender)
{
  for (const XmlNode& child : Children(section))
  {
    appender.append(child.text());
  }
}

/// The record that a manifest is read into before endReading() merges it into \p record, so that
/// \p record is unchanged when memory runs out. Lists that are only appended to start empty.
PackageInfoPrivate beginReading(const PackageInfoPrivate& record)
{
  PackageInfoPrivate read;
  read.langToName = record.langToName;
  read.langToDesc = record.langToDesc;
  read.supportedLanguages = record.supportedLanguages;
  read.descriptionLanguages = record.descriptionLanguages;
  return read;
}

/// Merges what has been read into \p record.
void endReading(PackageInfoPrivate& record, PackageInfoPrivate& read) noexcept
{
  for (const auto& attribute : rootAttributes<PackageInfoPrivate>)
  {
    (record.*attribute.member).swap(read.*attribute.member);
  }
  record.langToName.swap(read.langToName);
  record.langToDesc.swap(read.langToDesc);
  record.supportedLanguages.swap(read.supportedLanguages);
  record.descriptionLanguages.swap(read.descriptionLanguages);
  const auto append = [&record, &read](auto list)
  { (record.*list).splice((record.*list).end(), read.*list); };
  append(&PackageInfoPrivate::behaviors);
  append(&PackageInfoPrivate::dialogs);
  append(&PackageInfoPrivate::languages);
  append(&PackageInfoPrivate::robotRequirements);
  append(&PackageInfoPrivate::mirelRequirements);
  append(&PackageInfoPrivate::services);
  append(&PackageInfoPrivate::executableFiles);
}

/// Parses an open file and closes it, whatever comes of it.
std::optional<ManifestTree> parseAndClose(QFile& file, LoadError& error)
{
  const auto closing = qScopeGuard([&file] { file.close(); });
  return parseManifest(file, error);
}

/// Adds what a manifest contains to a package; false when there is no manifest.
bool merge(const std::optional<ManifestTree>& manifest, PackageInfo& package)
{
  if (manifest)
  {
    recordOf(package).loadFromManifest(manifest->root(), &package);
  }
  return manifest.has_value();
}
} // namespace

bool PackageInfo::loadFromManifestFile(const std::string& path)
{
  QFile file(toQString(path));
  return loadFromManifestFile(file);
}

bool PackageInfo::loadFromManifestFile(QFile& file)
{
  const std::string name = fromQString(file.fileName());
  if (!file.open(QIODevice::ReadOnly))
  {
    logError("Could not open " + name + " for reading", "loadFromManifestFile");
    return false;
  }
  LoadError error;
  if (!merge(parseAndClose(file, error), *this))
  {
    logSyntaxError(name, error, "loadFromManifestFile");
    return false;
  }
  return true;
}

bool PackageInfo::loadFromManifestContent(const std::string& content)
{
  LoadError error;
  if (!readManifestText(content, error))
  {
    logSyntaxError(content, error, "loadFromManifestContent");
    return false;
  }
  return true;
}

bool PackageInfo::readManifestFile(const std::string& path, LoadError& error)
{
  return merge(parseFile(path, error), *this);
}

bool PackageInfo::readManifestDevice(QIODevice& device, LoadError& error)
{
  return merge(parseDevice(device, error), *this);
}

bool PackageInfo::readManifestText(const std::string& text, LoadError& error)
{
  return merge(parseManifest(text, error), *this);
}

void PackageInfoPrivate::loadFromXmlDocument(const QDomDocument& document, PackageInfo* info)
{
  loadFromManifest(XmlNode(document.documentElement()), info);
}

void PackageInfoPrivate::loadFromManifest(const XmlNode& root, PackageInfo* info)
{
  const ManifestNames& names = manifestNames();
  PackageInfoPrivate read = beginReading(recordOf(*info));
  readRootAttributes(root, read);
  // One of each for the whole manifest, since sections can come any number of times.
  LanguageAppender supported(read.supportedLanguages);
  LanguageAppender described(read.descriptionLanguages);
  for (const XmlNode& section : Children(root))
  {
    if (section.isNamed(names.names))
    {
      readLocalizedTexts(section, read.langToName);
    }
    else if (section.isNamed(names.descriptions))
    {
      readLocalizedTexts(section, read.langToDesc);
    }
    else if (section.isNamed(names.services))
    {
      readItems(section, names.service, read.services, serviceFrom);
    }
    else if (section.isNamed(names.executableFiles))
    {
      readItems(section, names.file, read.executableFiles, executableFileFrom);
    }
    else if (section.isNamed(names.requirements))
    {
      readItems(section, names.robotRequirement, read.robotRequirements, robotRequirementFrom);
      readItems(section, names.mirelRequirement, read.mirelRequirements, mirelRequirementFrom);
    }
    else if (section.isNamed(names.supportedLanguages))
    {
      readLanguages(section, supported);
    }
    else if (section.isNamed(names.descriptionLanguages))
    {
      readLanguages(section, described);
    }
    else if (section.isNamed(names.contents))
    {
      readContents(section, read.behaviors, read.dialogs, read.languages, [](const XmlNode&) {});
    }
  }
  endReading(recordOf(*info), read);
}

} // namespace vesk
