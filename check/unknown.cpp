// SPDX-License-Identifier: Apache-2.0
// What the format does not have, or has elsewhere, and what may be meant by it.
#include <check/checker.hpp>
#include <check/confusions.hpp>
#include <check/fitting.hpp>

#include <algorithm>
#include <iterator>

namespace vesk::check
{
namespace
{
constexpr const char* schemaInstances = "http://www.w3.org/2001/XMLSchema-instance";

/// What to do about a name that the format does not have, when the format has those that it may mean.
QString orderFor(const Meaning& meaning, const QString& written, bool isRivalled, bool canMerge)
{
  if (meaning.probable.empty())
  {
    return {};
  }
  if (meaning.missing.empty())
  {
    return QStringLiteral("; %1 is there already%2; %3")
        .arg(choiceOf(meaning.probable),
             isOtherCase(written, meaning.probable.front())
                 ? QStringLiteral(", and names are case-sensitive")
                 : QString(),
             QLatin1String(canMerge ? "merge them" : "keep one of them"));
  }
  return (!isRivalled ? QStringLiteral("; write %1")
          : canMerge  ? QStringLiteral("; others may mean %1, too; merge them")
                      : QStringLiteral("; others may mean %1, too; keep one of them"))
      .arg(choiceOf(meaning.missing));
}

struct Home
{
  QString path; ///< of the element that may hold it
  QString name;
};

void collectHomes(const CheckedElement& parent, std::vector<Home>& homes)
{
  for (const CheckedElement& child : parent.children)
  {
    homes.push_back({QString::fromStdString(parent.path), child.name});
    collectHomes(child, homes);
  }
}

/// Where elements of the format stand: all of them.
const std::vector<Home>& allHomes()
{
  static const std::vector<Home> all = []
  {
    std::vector<Home> homes;
    collectHomes(checkedPackage(), homes);
    return homes;
  }();
  return all;
}

/// Of the homes those of some element: those within its parent, if there are any there.
template <typename IsMeant>
std::vector<Home> homesOf(const CheckedElement& parent, const IsMeant& isMeant)
{
  std::vector<Home> homes;
  std::copy_if(allHomes().begin(), allHomes().end(), std::back_inserter(homes),
               [&isMeant](const Home& home) { return isMeant(home.name); });
  const QString inParent = QString::fromStdString(parent.path) + '/';
  const auto isNear = [&inParent](const Home& home)
  { return home.path.startsWith(inParent) && home.path.indexOf('/', inParent.size()) == -1; };
  const auto far = std::stable_partition(homes.begin(), homes.end(), isNear);
  if (far != homes.begin())
  {
    homes.erase(far, homes.end());
  }
  return homes;
}

/// Where to move an element; the name that it has there is another where the case of its letters is, or
/// where it is usually written for that.
QString orderToMove(const std::vector<Home>& homes, const QString& written)
{
  std::vector<QString> paths(homes.size());
  std::transform(homes.begin(), homes.end(), paths.begin(),
                 [](const Home& home) { return home.path; });
  return QStringLiteral("move it into ") + choiceOf(paths) +
         (homes.front().name == written ? QString()
                                        : QStringLiteral(", as ") + quoted(homes.front().name));
}

std::vector<Home> homesElsewhere(const QString& written, const CheckedElement& parent,
                                 const std::vector<QString>& known)
{
  const auto isOtherCaseOf = [&written](const QString& name) { return isOtherCase(written, name); };
  if (!usuallyMeant(written, known).empty() ||
      std::any_of(known.begin(), known.end(), isOtherCaseOf))
  {
    return {};
  }
  std::vector<Home> homes = homesOf(parent, isOtherCaseOf);
  if (homes.empty() && probablyMeant(written, known).empty())
  {
    homes = homesOf(parent, [&written](const QString& name)
                    { return !usuallyMeant(written, {name}).empty(); });
  }
  return homes;
}

/// What a name may mean of some, and which of these are missing.
template <typename IsMissing>
Meaning meaningOf(const QString& name, const std::vector<QString>& known,
                  const IsMissing& isMissing)
{
  Meaning meaning{probablyMeant(name, known), {}};
  std::copy_if(meaning.probable.begin(), meaning.probable.end(),
               std::back_inserter(meaning.missing), isMissing);
  return meaning;
}

template <typename Known>
std::vector<QString> namesOf(const std::vector<Known>& all)
{
  std::vector<QString> names(all.size());
  std::transform(all.begin(), all.end(), names.begin(), [](const Known& one) { return one.name; });
  return names;
}

/// Whether an attribute says where the schema of a manifest is, which schemas allow as well.
bool isSchemaPlace(const Node& element, const QString& name)
{
  return (name == QLatin1String("xsi:schemaLocation") ||
          name == QLatin1String("xsi:noNamespaceSchemaLocation")) &&
         element.attributeInTag("xmlns:xsi") == QLatin1String(schemaInstances);
}
} // namespace

void Checker::checkUnknownAttributes(const Node& element, const CheckedElement& checked,
                                     std::set<QString>& missing)
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
  std::map<QString, Meaning> meanings;
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
    else if (found.isOn(RuleId::UnknownAttribute))
    {
      meanings[name] = meaningOf(name, namesOf(checked.attributes),
                                 [&element](const QString& known)
                                 { return !element.hasAttribute(known.toStdString()); });
    }
  }
  std::map<QString, int> rivals;
  for (const auto& [name, meaning] : meanings)
  {
    missing.insert(meaning.missing.begin(), meaning.missing.end());
    for (const QString& meant : meaning.missing)
    {
      ++rivals[meant];
    }
  }
  for (const auto& [name, meaning] : meanings)
  {
    const bool isRivalled =
        std::any_of(meaning.missing.begin(), meaning.missing.end(),
                    [&rivals](const QString& meant) { return rivals[meant] > 1; });
    reportUnknownAttribute(element, checked, name, meaning, isRivalled);
  }
}

void Checker::reportUnknownAttribute(const Node& element, const CheckedElement& checked,
                                     const QString& name, const Meaning& meaning, bool isRivalled)
{
  if (!countOne(RuleId::UnknownAttribute, attributeOf(element, name)))
  {
    return;
  }
  const bool isSure = !isRivalled && meaning.isOne() && !isPrefixed(name) &&
                      isSurelyMeant(name, meaning.missing.front());
  const std::size_t number =
      add(RuleId::UnknownAttribute, attributeOf(element, name),
          QStringLiteral("%1 has no attribute %2").arg(quoted(element.name()), quoted(name)) +
              orderFor(meaning, name, isRivalled, false),
          isSure ? mending.renameAttribute(element, name, meaning.missing.front()) : std::nullopt);
  const format::Attribute* const key = format::attributeFor(checked.format, format::Role::Key);
  if (key != nullptr && isSure && meaning.missing.front() == QString::fromStdString(key->name))
  {
    noteNewKey(number, checked, element.attributeInTag(name.toStdString()));
  }
}

void Checker::learnMeanings(Siblings& siblings)
{
  const CheckedElement& parent = siblings.checkedParent;
  const std::vector<QString> known = namesOf(parent.children);
  for (auto step = siblings.total.constBegin(); step != siblings.total.constEnd(); ++step)
  {
    const QString& name = step.key();
    if (name.contains('(') || std::find(known.begin(), known.end(), name) != known.end())
    {
      continue; // no element, or no unknown one
    }
    UnknownChild& child = siblings.unknown[name];
    const std::vector<Home> homes = homesElsewhere(name, parent, known);
    if (!homes.empty())
    {
      child.orderToMove = orderToMove(homes, name);
      continue;
    }
    child.meaning = meaningOf(name, known,
                              [&](const QString& meant)
                              { return !siblings.total.contains(meant) || parent.repeats(meant); });
    for (const QString& meant : child.meaning.missing)
    {
      siblings.rivals[meant] += parent.repeats(meant) ? 0 : step.value();
    }
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
  if (!found.isOn(RuleId::MisplacedElement) && !found.isOn(RuleId::UnknownElement))
  {
    return;
  }
  if (siblings.unknown.empty())
  {
    learnMeanings(siblings);
  }
  const QString name = element.name();
  const UnknownChild& child = siblings.unknown[stepOf(element)];
  if (!child.orderToMove.isEmpty())
  {
    report(RuleId::MisplacedElement, nameOf(element),
           QStringLiteral("%1 is skipped in %2; %3")
               .arg(quoted(name), quoted(parent.name), child.orderToMove));
  }
  else if (countOne(RuleId::UnknownElement, nameOf(element)))
  {
    const Meaning& meaning = child.meaning;
    const bool isRivalled =
        std::any_of(meaning.missing.begin(), meaning.missing.end(),
                    [&siblings](const QString& meant) { return siblings.rivals[meant] > 1; });
    const CheckedElement* const meant =
        meaning.probable.empty() ? nullptr : parent.childNamed(meaning.probable.front());
    const bool canMerge = meant != nullptr && !meant->children.empty();
    const bool isSure =
        !isRivalled && meaning.isOne() && !isPrefixed(name) && isSurely(element, *meant);
    const std::size_t number =
        add(RuleId::UnknownElement, nameOf(element),
            QStringLiteral("%1 holds no element %2").arg(quoted(parent.name), quoted(name)) +
                orderFor(meaning, name, isRivalled, canMerge),
            isSure ? mending.rename(element, meant->name) : std::nullopt);
    const format::Attribute* const key =
        isSure ? format::attributeFor(meant->format, format::Role::Key) : nullptr;
    if (key != nullptr)
    {
      noteNewKey(number, *meant, element.attribute(key->name));
    }
  }
}

void Checker::reportUnknownPermission(const Node& element, const CheckedElement& permissions)
{
  if (!countOne(RuleId::UnsupportedPermission, nameOf(element)))
  {
    return;
  }
  const std::vector<QString> all = namesOf(permissions.children);
  const QString name = element.name();
  const std::vector<QString> probable = probablyMeant(name, all);
  const bool isSure = probable.size() == 1 && !isPrefixed(name) &&
                      isSurely(element, *permissions.childNamed(probable.front()));
  add(RuleId::UnsupportedPermission, nameOf(element),
      QStringLiteral("there is no permission %1").arg(quoted(name)) +
          (probable.empty() ? QStringLiteral(", only ") + listOf(all)
                            : QStringLiteral("; write ") + choiceOf(probable)),
      isSure ? mending.rename(element, probable.front()) : std::nullopt);
}

} // namespace vesk::check
