// SPDX-License-Identifier: Apache-2.0
#include <package/manifest2/loadmanifest.hpp>
#include <package/manifest2/sectionreaders.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/registrar.hpp>
#include <package/rootattributes.hpp>
#include <package/xml/manifesttree.hpp>
#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>
#include <package/xml/text.hpp>
#include <vesk/log.hpp>

#include <QFile>

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace vesk
{
namespace
{
struct Section
{
  XmlName ManifestNames::*name; ///< of the element, and the key in PackageInfo2::sections
  AnyValue (*read)(const XmlNode& node);
};

template <auto reader>
AnyValue readBy(const XmlNode& node)
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

PackageInfo2 sectionsOf(const XmlNode& root)
{
  PackageInfo2 info;
  readRootAttributes(root, info);
  for (const XmlNode& node : Children(root))
  {
    for (const Section& section : sectionReaders)
    {
      const XmlName& name = manifestNames().*section.name;
      if (node.isNamed(name))
      {
        info.sections[name] = section.read(node);
        break;
      }
    }
  }
  return info;
}

/// What loadManifest() would store under "web": that of the last contents.
std::optional<WebInfo> webContentOf(const XmlNode& root)
{
  std::optional<WebInfo> web;
  for (const XmlNode& section : Children(root))
  {
    if (section.isNamed(manifestNames().contents))
    {
      web.reset();
      for (const XmlNode& child : Children(section))
      {
        if (child.isNamed(manifestNames().webContent))
        {
          web = webFromXmlNode(child);
        }
      }
    }
  }
  return web;
}

/// Fills \p package and \p web from the manifest; false when there is none.
bool read(const std::optional<ManifestTree>& manifest, PackageInfo& package,
          std::optional<WebInfo>& web)
{
  if (manifest)
  {
    std::optional<WebInfo> found = webContentOf(manifest->root());
    recordOf(package).loadFromManifest(manifest->root(), &package);
    web = std::move(found);
  }
  return manifest.has_value();
}

/// Replaces \p info by what the manifest contains; false when there is no manifest.
bool replace(const std::optional<ManifestTree>& manifest, PackageInfo2& info)
{
  if (manifest)
  {
    info = sectionsOf(manifest->root());
  }
  return manifest.has_value();
}
} // namespace

PackageInfo2 loadManifest(const std::string& path)
{
  QFile file(toQString(path));
  if (!file.open(QIODevice::ReadOnly))
  {
    fail("Could not open " + path + " for reading.");
  }
  LoadError error;
  const std::optional<ManifestTree> manifest = parseManifest(file, error);
  file.close();
  if (!manifest)
  {
    fail("Syntax error in " + path + ':' + std::to_string(error.line) + ':' +
         std::to_string(error.column) + ": " + error.message);
  }
  return sectionsOf(manifest->root());
}

bool readManifestFile(const std::string& path, PackageInfo2& info, LoadError& error)
{
  return replace(parseFile(path, error), info);
}

bool readManifestDevice(QIODevice& device, PackageInfo2& info, LoadError& error)
{
  return replace(parseDevice(device, error), info);
}

bool readManifestText(const std::string& text, PackageInfo2& info, LoadError& error)
{
  return replace(parseManifest(text, error), info);
}

bool readManifestDevice(QIODevice& device, PackageInfo& package, PackageInfo2& info,
                        LoadError& error)
{
  const std::optional<ManifestTree> manifest = parseDevice(device, error);
  if (!manifest)
  {
    return false;
  }
  PackageInfo2 read = sectionsOf(manifest->root());
  recordOf(package).loadFromManifest(manifest->root(), &package);
  info = std::move(read);
  return true;
}

bool readManifestDevice(QIODevice& device, PackageInfo& package, std::optional<WebInfo>& web,
                        LoadError& error)
{
  return read(parseDevice(device, error), package, web);
}

bool readManifestText(const std::string& text, PackageInfo& package, std::optional<WebInfo>& web,
                      LoadError& error)
{
  return read(parseManifest(text, error), package, web);
}

PackageInfo2 loadXmlDocument(const QDomDocument& document)
{
  return sectionsOf(XmlNode(document.documentElement()));
}

} // namespace vesk
