// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_SECTIONS_HPP
#define PACKAGE_SECTIONS_HPP

#include <package/packageinfo.hpp>
#include <package/recordaccess.hpp>
#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>

#include <string>

/// Reading of sections that both readers of manifests share; each has its own containers.
namespace vesk
{

PackageService serviceFrom(const XmlNode& element);
RobotRequirement robotRequirementFrom(const XmlNode& element);
MirelRequirement mirelRequirementFrom(const XmlNode& element);
std::string executableFileFrom(const XmlNode& element);

/// Appends what \p make gives for each child of \p section that has this name.
template <typename List, typename Make>
void readItems(const XmlNode& section, const XmlName& name, List& items, Make make)
{
  for (const XmlNode& child : Children(section))
  {
    if (child.isNamed(name))
    {
      items.push_back(make(child));
    }
  }
}

/// Appends a descriptor for each behavior, dialog and language pack in \p section, whatever its
/// loader returns, and calls \p other with every other child.
template <typename Behaviors, typename Dialogs, typename Languages, typename Other>
void readContents(const XmlNode& section, Behaviors& behaviors, Dialogs& dialogs,
                  Languages& languages, Other other)
{
  const ManifestNames& names = manifestNames();
  for (const XmlNode& child : Children(section))
  {
    if (child.isNamed(names.behaviorContent))
    {
      recordOf(behaviors.emplace_back()).loadFromManifest(child);
    }
    else if (child.isNamed(names.dialogContent))
    {
      recordOf(dialogs.emplace_back()).loadFromManifest(child);
    }
    else if (child.isNamed(names.languageContent))
    {
      recordOf(languages.emplace_back()).loadFromManifest(child);
    }
    else
    {
      other(child);
    }
  }
}

} // namespace vesk

#endif
