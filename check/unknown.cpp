// SPDX-License-Identifier: Apache-2.0
// What the format does not have, or has elsewhere, and what may be meant by it.
#include <check/checker.hpp>
#include <check/confusions.hpp>

#include <algorithm>

namespace vesk::check
{
namespace
{
constexpr const char* schemaInstances = "http://www.w3.org/2001/XMLSchema-instance";

QString orderToWrite(const std::vector<QString>& names)
{
  return names.empty() ? QString() : QStringLiteral("; write ") + choiceOf(names);
}

void collectHomes(const CheckedElement& parent, const Node& child, std::vector<QString>& homes)
{
  if (parent.childNamed(child) != nullptr)
  {
    homes.push_back(QString::fromStdString(parent.path));
  }
  for (const CheckedElement& other : parent.children)
  {
    collectHomes(other, child, homes);
  }
}

/// The paths of the elements that may hold a child of this name: those within its parent, if there are
/// any there.
std::vector<QString> homesOf(const Node& child, const CheckedElement& parent)
{
  std::vector<QString> homes;
  for (const CheckedElement& sibling : parent.children)
  {
    if (sibling.childNamed(child) != nullptr)
    {
      homes.push_back(QString::fromStdString(sibling.path));
    }
  }
  if (homes.empty())
  {
    collectHomes(checkedPackage(), child, homes);
  }
  return homes;
}

/// Whether an attribute says where the schema of a manifest is, which schemas allow as well.
bool isSchemaPlace(const Node& element, const QString& name)
{
  return (name == QLatin1String("xsi:schemaLocation") ||
          name == QLatin1String("xsi:noNamespaceSchemaLocation")) &&
         element.attributeInTag("xmlns:xsi") == QLatin1String(schemaInstances);
}
} // namespace

void Checker::checkUnknownAttributes(const Node& element, const CheckedElement& checked)
{
  std::set<QString> unknown; // sorted: the order must be the same in every process
  for (const QString& name : element.attributeNames())
  {
    if (std::none_of(checked.attributes.begin(), checked.attributes.end(),
                     [&name](const CheckedAttribute& known)
                     { return QString(known.name) == name; }))
    {
      unknown.insert(name);
    }
  }
  const bool isRoot = &checked == &checkedPackage();
  std::set<QString> meant;
  for (const QString& name : unknown)
  {
    if (name == QLatin1String("xmlns") && !element.attributeInTag("xmlns").isEmpty())
    {
      report(RuleId::DefaultNamespace, attributeOf(element, name),
             QStringLiteral("%1 is in a namespace, which no manifest has; remove \"xmlns\"")
                 .arg(quoted(element.name())));
    }
    else if (name == QLatin1String("xmlns") || name.startsWith(QLatin1String("xmlns:")) ||
             (isRoot && isSchemaPlace(element, name)))
    {
      report(RuleId::NotKept, attributeOf(element, name),
             QStringLiteral("the attribute %1 is not kept when a program writes the manifest")
                 .arg(quoted(name)));
    }
    else
    {
      reportUnknownAttribute(element, checked, name, meant);
    }
  }
}

void Checker::reportUnknownAttribute(const Node& element, const CheckedElement& checked,
                                     const QString& name, std::set<QString>& meant)
{
  if (!counts(RuleId::UnknownAttribute, attributeOf(element, name)))
  {
    return;
  }
  std::vector<QString> missing;
  for (const CheckedAttribute& attribute : checked.attributes)
  {
    if (!element.hasAttribute(attribute.name) && meant.count(attribute.name) == 0)
    {
      missing.push_back(attribute.name);
    }
  }
  const std::vector<QString> probable = probablyMeant(name, missing);
  meant.insert(probable.begin(), probable.end());
  add(RuleId::UnknownAttribute, attributeOf(element, name),
      QStringLiteral("%1 has no attribute %2").arg(quoted(element.name()), quoted(name)) +
          orderToWrite(probable),
      probable.size() == 1 && !isPrefixed(name)
          ? mending.renameAttribute(element, name, probable.front())
          : std::nullopt);
  const format::Attribute* const key = format::attributeFor(checked.format, format::Role::Key);
  if (key != nullptr && probable.size() == 1 &&
      probable.front() == QString::fromStdString(key->name))
  {
    noteNewKey(checked, element.attributeInTag(name.toStdString()));
  }
}

void Checker::reportUnknown(const Node& element, Siblings& siblings)
{
  const CheckedElement& parent = siblings.checkedParent;
  if (parent.format.holds == format::Holds::Names)
  {
    reportUnknownPermission(element, parent);
    return;
  }
  const QString name = element.name();
  std::vector<QString> possible;
  for (const CheckedElement& child : parent.children)
  {
    if (child.format.isRepeatable ||
        (!siblings.total.contains(child.name) && siblings.meant.count(child.name) == 0))
    {
      possible.push_back(child.name);
    }
  }
  const std::vector<QString> homes =
      usuallyMeant(name, possible).empty() ? homesOf(element, parent) : std::vector<QString>();
  if (!homes.empty())
  {
    report(RuleId::MisplacedElement, nameOf(element),
           QStringLiteral("%1 is skipped in %2; move it into %3")
               .arg(quoted(name), quoted(parent.name), choiceOf(homes)));
  }
  else if (counts(RuleId::UnknownElement, nameOf(element)))
  {
    const std::vector<QString> probable = probablyMeant(name, possible);
    siblings.meant.insert(probable.begin(), probable.end());
    add(RuleId::UnknownElement, nameOf(element),
        QStringLiteral("%1 holds no element %2").arg(quoted(parent.name), quoted(name)) +
            orderToWrite(probable),
        probable.size() == 1 && !isPrefixed(name) ? mending.rename(element, probable.front())
                                                  : std::nullopt);
  }
}

void Checker::reportUnknownPermission(const Node& element, const CheckedElement& permissions)
{
  if (!counts(RuleId::UnsupportedPermission, nameOf(element)))
  {
    return;
  }
  std::vector<QString> all;
  for (const CheckedElement& permission : permissions.children)
  {
    all.push_back(permission.name);
  }
  const QString name = element.name();
  const std::vector<QString> probable = probablyMeant(name, all);
  add(RuleId::UnsupportedPermission, nameOf(element),
      QStringLiteral("there is no permission %1").arg(quoted(name)) +
          (probable.empty() ? QStringLiteral(", only ") + listOf(all) : orderToWrite(probable)),
      probable.size() == 1 && !isPrefixed(name) ? mending.rename(element, probable.front())
                                                : std::nullopt);
}

} // namespace vesk::check
