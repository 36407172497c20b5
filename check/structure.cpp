// SPDX-License-Identifier: Apache-2.0
#include <check/checker.hpp>
#include <check/elementtext.hpp>
#include <package/xml/text.hpp>

#include <QHash>
#include <QStringList>

#include <algorithm>

namespace vesk::check
{
namespace
{
/// A node's step in a place, without its number.
QString stepOf(const Node& node)
{
  if (node.isElement())
  {
    return cut(node.name());
  }
  if (node.isText())
  {
    return QStringLiteral("text()");
  }
  return node.isComment() ? QStringLiteral("comment()")
                          : QStringLiteral("processing-instruction()");
}

/// A question with the known name that differs only in case; empty when there is none.
template <typename Names>
QString didYouMean(const QString& name, const Names& known)
{
  const auto meant = std::find_if(std::begin(known), std::end(known),
                                  [&name](const QString& other)
                                  { return name.compare(other, Qt::CaseInsensitive) == 0; });
  return meant == std::end(known) ? QString()
                                  : QStringLiteral("; did you mean %1?").arg(quoted(*meant));
}

template <typename Entry>
std::vector<QString> namesOf(const std::vector<Entry>& entries)
{
  std::vector<QString> names(entries.size());
  std::transform(entries.begin(), entries.end(), names.begin(),
                 [](const Entry& entry) { return entry.name; });
  return names;
}

QString listOf(const std::vector<QString>& names)
{
  QStringList all;
  for (const QString& name : names)
  {
    all += quoted(name);
  }
  return all.join(QStringLiteral(", "));
}

const CheckedElement* childNamed(const CheckedElement& parent, const Node& node)
{
  const auto child =
      std::find_if(parent.children.begin(), parent.children.end(),
                   [&node](const CheckedElement& other) { return node.isNamed(other.name); });
  return child == parent.children.end() ? nullptr : &*child;
}

/// Of another vocabulary, which may be meant so.
bool isPrefixed(const QString& name) { return name.contains(':'); }

Node rootBehind(const Node& firstOfDocument)
{
  Node node = firstOfDocument;
  while (!node.isNull() && !node.isElement())
  {
    node = node.nextSibling();
  }
  return node;
}

/// Names what a value would lose when it is written again; empty when nothing.
QString lossIn(const QString& value)
{
  const auto isPlain = [](QChar c)
  { return c >= ' ' && c < QChar::ReplacementCharacter && !c.isSurrogate(); };
  if (std::all_of(value.begin(), value.end(), isPlain)) // nearly all are
  {
    return {};
  }
  if (value.contains(QChar::ReplacementCharacter))
  {
    return QStringLiteral("U+FFFD, which stands for bytes that are no text");
  }
  return toXmlText(value.toStdString()) == value
             ? QString()
             : QStringLiteral("a character that XML cannot carry");
}
} // namespace

Checker::Checker(const Node& firstOfDocument, const source::Document* edited,
                 const Options& options, Report& findings)
    : first(firstOfDocument), mending(edited),
      packageFolder(QString::fromStdString(options.packageFolder)), found(findings),
      packageLanguages(rootBehind(firstOfDocument))
{}

void Checker::check(const Node& documentType)
{
  if (!documentType.isNull())
  {
    steps.clear();
    reportNotKept(documentType);
  }
  for (Node node = first; !node.isNull(); node = node.nextSibling())
  {
    steps = {stepOf(node)};
    if (node.isElement())
    {
      if (!node.isNamed(checkedPackage().name))
      {
        report(RuleId::RootName, nameOf(node),
               QStringLiteral("the root is called %1 instead of \"package\"")
                   .arg(quoted(node.name())));
      }
      checkElement(node, checkedPackage());
    }
    else if (!node.isDeclaration())
    {
      reportNotKept(node);
    }
  }
}

void Checker::report(RuleId id, const Subject& subject, const QString& message,
                     std::optional<Mend> mend)
{
  if (!found.count(id))
  {
    return;
  }
  QString place;
  for (const QString& step : steps)
  {
    place += '/' + step;
  }
  if (!subject.attribute.isEmpty())
  {
    place += "/@" + cut(subject.attribute);
  }
  found.add(id, message,
            {subject.range(), subject.node.toolkitsLine(), subject.node.toolkitsColumn(),
             subject.part == Subject::Part::Text},
            place, std::move(mend));
}

void Checker::reportNotKept(const Node& node)
{
  const QString what = node.isComment()           ? QStringLiteral("a comment")
                       : node.isDocumentType()    ? QStringLiteral("a document type")
                       : node.isEntityReference() ? QStringLiteral("a reference to an entity")
                                                  : QStringLiteral("a processing instruction");
  report(RuleId::NotKept, whole(node),
         what + QStringLiteral(" is not kept when a program writes the manifest"));
}

void Checker::reportNotKeptIn(const Node& text)
{
  for (const Node& child : Children(text))
  {
    if (child.isElement())
    {
      reportNotKeptIn(child);
    }
    else if (!child.isText())
    {
      reportNotKept(child);
    }
  }
}

void Checker::checkElement(const Node& element, const CheckedElement& checked)
{
  checkAttributes(element, checked);
  switch (checked.format.holds)
  {
  case format::Holds::Presence:
    checkPresence(element);
    reportNotKeptIn(element);
    break;
  case format::Holds::Text:
    checkText(element);
    reportNotKeptIn(element);
    break;
  case format::Holds::Nothing:
  case format::Holds::Elements:
  case format::Holds::Entries:
  case format::Holds::Names:
    checkChildren(element, checked);
    break;
  }
  checkValues(element, checked);
}

void Checker::checkPresence(const Node& element)
{
  const QString text = element.text().trimmed();
  if (!text.isEmpty())
  {
    report(RuleId::PresenceCounts, textOf(element),
           QStringLiteral("%1 counts by its presence, and not by the text %2")
               .arg(quoted(element.name()), quoted(text)));
  }
}

void Checker::checkText(const Node& element)
{
  checkCharacters(textOf(element), element.text());
  bool hasElements = false;
  for (const Node& child : Children(element))
  {
    hasElements = hasElements || child.isElement();
  }
  if (hasElements)
  {
    report(RuleId::MarkupInText, textOf(element),
           QStringLiteral("the text of %1 has elements within; they are dropped")
               .arg(quoted(element.name())));
  }
}

void Checker::checkCharacters(const Subject& subject, const QString& value)
{
  const QString loss = lossIn(value);
  if (!loss.isEmpty())
  {
    report(RuleId::UnwritableCharacter, subject,
           QStringLiteral("%1 holds %2").arg(quoted(value), loss));
  }
}

void Checker::checkAttributes(const Node& element, const CheckedElement& checked)
{
  for (const CheckedAttribute& known : checked.attributes)
  {
    checkCharacters(valueOf(element, known.name), element.attribute(known.name));
  }
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
  for (const QString& name : unknown)
  {
    if (name == QLatin1String("xmlns") || name.startsWith(QLatin1String("xmlns:")) ||
        name.startsWith(QLatin1String("xsi:")))
    {
      report(RuleId::NotKept, attributeOf(element, name),
             QStringLiteral("the attribute %1 is not kept when a program writes the manifest")
                 .arg(quoted(name)));
    }
    else
    {
      report(RuleId::UnknownAttribute, attributeOf(element, name),
             QStringLiteral("%1 has no attribute %2").arg(quoted(element.name()), quoted(name)) +
                 didYouMean(name, namesOf(checked.attributes)));
    }
  }
}

void Checker::checkChildren(const Node& element, const CheckedElement& checked)
{
  // Another element of the same name continues a list; any other element starts its own lists.
  const bool isList = checked.format.holds == format::Holds::Entries ||
                      checked.format.holds == format::Holds::Names;
  Lists outerLists;
  if (!isList)
  {
    lists.swap(outerLists);
  }
  QHash<QString, int> total;
  for (const Node& child : Children(element))
  {
    ++total[stepOf(child)];
  }
  QHash<QString, int> before;
  for (const Node& child : Children(element))
  {
    const QString step = stepOf(child);
    const int number = ++before[step];
    steps.push_back(total[step] > 1 ? QStringLiteral("%1[%2]").arg(step).arg(number) : step);
    if (child.isElement())
    {
      checkChild(child, checked, number > 1);
    }
    else
    {
      checkNoElement(child, checked);
    }
    steps.pop_back();
  }
  if (!isList)
  {
    lists.swap(outerLists);
  }
}

void Checker::checkChild(const Node& child, const CheckedElement& parent, bool isRepeated)
{
  if (parent.format.holds == format::Holds::Entries)
  {
    const CheckedElement& entry = parent.children.front();
    if (!child.isNamed(entry.name))
    {
      report(RuleId::UnusualName, nameOf(child),
             QStringLiteral("%1 is read as %2, as any element here is")
                 .arg(quoted(child.name()), quoted(entry.name)),
             isPrefixed(child.name()) ? std::nullopt : mending.rename(child, entry.name));
    }
    checkElement(child, entry);
    return;
  }
  const CheckedElement* const known = childNamed(parent, child);
  if (known == nullptr)
  {
    reportUnknown(child, parent);
    return;
  }
  if (parent.format.holds == format::Holds::Names &&
      !lists[&parent].insert(QString(known->name)).second)
  {
    report(RuleId::RepeatedPermission, nameOf(child),
           QStringLiteral("the permission %1 is there already").arg(quoted(known->name)),
           mending.remove(child));
  }
  else if (isRepeated && known->format.several == format::Several::LastCounts)
  {
    report(RuleId::RepeatedElement, nameOf(child),
           QStringLiteral("a further %1 replaces the one before").arg(quoted(known->name)));
  }
  else if (isRepeated && known->format.several == format::Several::CountForOneReader)
  {
    report(RuleId::RepeatedSection, nameOf(child),
           QStringLiteral("a further %1 adds to the one before, or replaces it, depending on the "
                          "reader")
               .arg(quoted(known->name)));
  }
  checkElement(child, *known);
}

void Checker::reportUnknown(const Node& element, const CheckedElement& parent)
{
  const QString name = element.name();
  const std::vector<QString> children = namesOf(parent.children);
  std::vector<QString> homes;
  for (const format::Element* const home : format::homesOf(name.toStdString()))
  {
    homes.push_back(QString::fromStdString(home->name));
  }
  if (parent.format.holds == format::Holds::Names)
  {
    report(
        RuleId::UnsupportedPermission, nameOf(element),
        QStringLiteral("there is no permission %1, only %2").arg(quoted(name), listOf(children)));
  }
  else if (!homes.empty())
  {
    report(RuleId::MisplacedElement, nameOf(element),
           QStringLiteral("%1 is skipped in %2; it belongs into %3")
               .arg(quoted(name), quoted(parent.name), listOf(homes)));
  }
  else
  {
    report(RuleId::UnknownElement, nameOf(element),
           QStringLiteral("%1 holds no element %2").arg(quoted(parent.name), quoted(name)) +
               didYouMean(name, children));
  }
}

void Checker::checkNoElement(const Node& node, const CheckedElement& parent)
{
  if (parent.format.holds == format::Holds::Entries)
  {
    report(RuleId::EmptyEntry, textOf(node),
           QStringLiteral("what is no element is read as an empty entry of %1")
               .arg(quoted(parent.name)));
  }
  else if (node.isText())
  {
    if (!isBlank(node.text()))
    {
      report(RuleId::SkippedText, textOf(node),
             QStringLiteral("the text %1 in %2 is skipped")
                 .arg(quoted(node.text().trimmed()), quoted(parent.name)));
    }
  }
  else if (childNamed(parent, node) != nullptr)
  {
    report(RuleId::InstructionAsElement, nameOf(node),
           QStringLiteral("the processing instruction is read as an element %1")
               .arg(quoted(node.name())));
  }
  else
  {
    reportNotKept(node);
  }
}

} // namespace vesk::check
