// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_SECTIONS_HPP
#define PACKAGE_SECTIONS_HPP

#include <package/packageinfo.hpp>
#include <package/recordaccess.hpp>
#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>

#include <QDomElement>

#include <string>

/// Reading of sections that both readers of manifests share; each has its own containers.
namespace vesk
{

PackageService serviceFrom(const QDomElement& element);
RobotRequirement robotRequirementFrom(const QDomElement& element);
MirelRequirement mirelRequirementFrom(const QDomElement& element);
std::string executableFileFrom(const QDomElement& element);

/// Appends what \p make gives for each child of \p section that has this name.
template <typename List, typename Make>
void readItems(const QDomNode& section, const QString& name, List& items, Make make)
{
  for (const QDomNode& child : Children(section))
  {
    if (child.nodeName() == name)
    {
      items.push_back(make(child.toElement()));
    }
  }
}

/// Appends a descriptor for each behavior, dialog and language pack in \p section, whatever its
/// loader returns, and calls \p other with every other child.
template <typename Behaviors, typename Dialogs, typename Languages, typename Other>
void readContents(const QDomNode& section, Behaviors& behaviors, Dialogs& dialogs,
                  Languages& languages, Other other)
{
  const ManifestNames& names = manifestNames();
  for (QDomNode child : Children(section))
  {
    const QString name = child.nodeName();
    if (name == names.behaviorContent)
    {
      recordOf(behaviors.emplace_back()).loadFromManifest(child);
    }
    else if (name == names.dialogContent)
    {
      QDomElement element = child.toElement();
      dialogs.emplace_back().loadFromManifest(element);
    }
    else if (name == names.languageContent)
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
