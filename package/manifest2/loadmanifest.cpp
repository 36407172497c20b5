// SPDX-License-Identifier: Apache-2.0
#include <package/manifest2/loadmanifest.hpp>
#include <package/manifest2/sectionreaders.hpp>
#include <package/registrar.hpp>
#include <package/rootattributes.hpp>
#include <package/xml/names.hpp>
#include <package/xml/parsing.hpp>
#include <package/xml/reading.hpp>
#include <package/xml/text.hpp>
#include <vesk/log.hpp>

#include <QDomDocument>
#include <QFile>

#include <array>
#include <stdexcept>
#include <string>

namespace vesk
{
namespace
{
struct Section
{
  XmlName ManifestNames::*name; ///< of the element, and the key in PackageInfo2::sections
  AnyValue (*read)(const QDomNode& node);
};

template <auto reader>
AnyValue readBy(const QDomNode& node)
{
  return reader(node);
}

constexpr std::array sectionReaders{
    Section{&ManifestNames::names, readBy<translationsFromXmlNode>},
    Section{&ManifestNames::descriptions, readBy<translationsFromXmlNode>},
    Section{&ManifestNames::services, readBy<servicesFromXmlNode>},
    Section{&ManifestNames::executableFiles, readBy<executableFilesFromXmlNode>},
    Section{&ManifestNames::requirements, readBy<requirementsFromXmlNode>},
    Section{&ManifestNames::supportedLanguages, readBy<textFromXmlNode>},
    Section{&ManifestNames::contents, readBy<contentsFromXmlNode>},
};

[[noreturn]] void fail(const std::string& message)
{
  log::write(registrar.manifestCategory, log::Level::Error, message, "loadManifest");
  throw std::runtime_error(message);
}
} // namespace

PackageInfo2 loadManifest(const std::string& path)
{
  QFile file(toQString(path));
  if (!file.open(QIODevice::ReadOnly))
  {
    fail("Could not open " + path + " for reading.");
  }
  QDomDocument document;
  SyntaxError error;
  const bool parsed = parseXml(file, document, error);
  file.close();
  if (!parsed)
  {
    fail("Syntax error in " + path + ':' + std::to_string(error.line) + ':' +
         std::to_string(error.column) + ": " + fromQString(error.message));
  }
  return loadXmlDocument(document);
}

PackageInfo2 loadXmlDocument(const QDomDocument& document)
{
  PackageInfo2 info;
  const QDomElement root = document.documentElement();
  readRootAttributes(root, info);
  for (const QDomNode& node : Children(root))
  {
    const QString name = node.nodeName();
    for (const Section& section : sectionReaders)
    {
      if (name == manifestNames().*section.name)
      {
        info.sections[fromQString(name)] = section.read(node);
        break;
      }
    }
  }
  return info;
}

} // namespace vesk
