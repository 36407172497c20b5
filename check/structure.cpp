// SPDX-License-Identifier: Apache-2.0
#include <check/checker.hpp>
#include <check/elementtext.hpp>
#include <check/fitting.hpp>
#include <package/xml/text.hpp>

#include <algorithm>

namespace vesk::check
{
namespace
{
/// What a node is that is neither an element nor a text.
QString kindOf(const Node& node)
{
  return node.isComment()           ? QStringLiteral("a comment")
         : node.isDocumentType()    ? QStringLiteral("a document type")
         : node.isEntityReference() ? QStringLiteral("a reference to an entity")
                                    : QStringLiteral("a processing instruction");
}

Node rootBehind(const Node& firstOfDocument)
{
  Node node = firstOfDocument;
  while (!node.isNull() && !node.isElement())
  {
    node = node.nextSibling();
  }
  return node;
}

/// Whether a text of a draft has a reference in it, of which is not known what it stands for.
bool holdsReference(const Node& element)
{
  Node child = element.firstChild();
  while (!child.isNull() && !child.isEntityReference())
  {
    child = child.nextSibling();
  }
  return !child.isNull();
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
    return QStringLiteral("U+FFFD, which stands for bytes that are no text; correct it");
  }
  return toXmlText(value.toStdString()) == value
             ? QString()
             : QStringLiteral("a character that XML cannot carry; remove it");
}
} // namespace

QString Checker::stepOf(const Node& node)
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

Checker::Checker(const Node& firstOfDocument, const source::Document* edited,
                 const Options& options, Report& findings, const source::Document* draft)
    : first(firstOfDocument), mending(edited), files(QString::fromStdString(options.packageFolder)),
      found(findings), unfinished(draft), packageLanguages(rootBehind(firstOfDocument))
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
        const QString& name = checkedPackage().name;
        const bool isSure = isSurely(node, checkedPackage());
        report(RuleId::RootName, nameOf(node),
               QStringLiteral("the root is called %1; write %2")
                   .arg(quoted(node.name()), quoted(name)),
               isSure ? mending.rename(node, name) : std::nullopt);
      }
      checkElement(node, checkedPackage());
    }
    else if (!node.isDeclaration())
    {
      reportNotKept(node);
    }
  }
}

bool Checker::mayComeYet(RuleId id, const Subject& subject) const
{
  if (unfinished == nullptr)
  {
    return false;
  }
  switch (id)
  {
  case RuleId::UnlistedLanguage:
  case RuleId::UnnamedLanguage:
    return isOpen(rootBehind(first));
  case RuleId::EmptyText:
    return isOpen(subject.node) || holdsReference(subject.node);
  case RuleId::MissingElement:
  case RuleId::DialogWithoutTopics:
    return isOpen(subject.node);
  default:
    return subject.part == Subject::Part::Text &&
           (isOpen(subject.node) || holdsReference(subject.node));
  }
}

bool Checker::isOpen(const Node& element) const
{
  constexpr std::string_view endOfEmpty = "/>";
  const source::Node* const inText = element.inText();
  if (inText == nullptr || !inText->isElement() || inText->endTag().size() != 0)
  {
    return false;
  }
  const std::string_view tag = unfinished->text(inText->startTag());
  return tag.substr(tag.size() - endOfEmpty.size()) != endOfEmpty;
}

std::size_t Checker::add(RuleId id, const Subject& subject, const QString& message,
                         std::optional<Mend> mend)
{
  QString place;
  for (const QString& step : steps)
  {
    place += '/' + step;
  }
  if (!subject.attribute.isEmpty())
  {
    place += "/@" + cut(subject.attribute);
  }
  return found.add(id, message,
                   {subject.range(), subject.node.toolkitsLine(), subject.node.toolkitsColumn(),
                    subject.part == Subject::Part::Text},
                   place, std::move(mend));
}

void Checker::reportNotKept(const Node& node)
{
  report(RuleId::NotKept, whole(node),
         kindOf(node) + QStringLiteral(" is not kept when a program writes the manifest"));
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
  std::set<QString> missing;
  checkAttributes(element, checked, missing);
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
    checkChildren(element, checked, missing);
    break;
  }
  misspelt.swap(missing);
  checkValues(element, checked);
}

void Checker::checkPresence(const Node& element)
{
  const QString text = element.text().trimmed();
  if (!text.isEmpty())
  {
    const bool isYes = saysYes(text);
    report(RuleId::PresenceCounts, textOf(element),
           (isYes ? QStringLiteral("%1 says yes by being there; remove the text %2")
                  : QStringLiteral("%1 says yes by being there, not by the text %2; to say no, "
                                   "remove the element"))
               .arg(quoted(element.name()), quoted(text)),
           isYes ? mending.setText(element, {}) : std::nullopt);
  }
  checkMarkup(element);
}

void Checker::checkText(const Node& element)
{
  checkCharacters(textOf(element), element.text());
  checkMarkup(element);
}

void Checker::checkMarkup(const Node& element)
{
  for (const Node& child : Children(element))
  {
    if (child.isElement())
    {
      report(
          RuleId::MarkupInText, whole(child),
          QStringLiteral("elements in %1 are dropped, and their text is taken; remove their tags")
              .arg(quoted(element.name())));
      return;
    }
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

void Checker::checkAttributes(const Node& element, const CheckedElement& checked,
                              std::set<QString>& missing)
{
  int known = 0;
  for (const CheckedAttribute& attribute : checked.attributes)
  {
    if (element.hasAttribute(attribute.name))
    {
      ++known;
      checkCharacters(valueOf(element, attribute.name), element.attribute(attribute.name));
    }
  }
  if (element.attributeCount() != known)
  {
    checkUnknownAttributes(element, checked, missing);
  }
}

void Checker::checkChildren(const Node& element, const CheckedElement& checked,
                            std::set<QString>& missing)
{
  // Another element of the same name continues a list; any other element starts its own lists.
  const bool isList = checked.format.holds == format::Holds::Entries ||
                      checked.format.holds == format::Holds::Names;
  Lists outerLists;
  std::vector<NewKey> outerKeys;
  if (!isList)
  {
    lists.swap(outerLists);
    newKeys.swap(outerKeys);
  }
  Siblings children{checked};
  for (const Node& child : Children(element))
  {
    ++children.total[stepOf(child)];
  }
  for (const Node& child : Children(element))
  {
    const QString step = stepOf(child);
    const int number = ++children.before[step];
    steps.push_back(children.total[step] > 1 ? QStringLiteral("%1[%2]").arg(step).arg(number)
                                             : step);
    if (child.isElement())
    {
      checkChild(child, children);
    }
    else
    {
      checkNoElement(child, checked);
    }
    steps.pop_back();
  }
  if (found.isOn(RuleId::UnknownElement))
  {
    for (const auto& [name, unknown] : children.unknown)
    {
      missing.insert(unknown.meaning.missing.begin(), unknown.meaning.missing.end());
    }
  }
  checkNeededChildren(element, children, missing);
  if (!isList)
  {
    dropMendsToSameKeys();
    lists.swap(outerLists);
    newKeys.swap(outerKeys);
  }
}

void Checker::checkChild(const Node& child, Siblings& siblings)
{
  const CheckedElement& parent = siblings.checkedParent;
  if (parent.format.holds == format::Holds::Entries)
  {
    const CheckedElement& entry = parent.children.front();
    if (!child.isNamed(entry.name))
    {
      report(RuleId::UnusualName, nameOf(child),
             QStringLiteral("%1 is read as %2, as any element here is; write %2")
                 .arg(quoted(child.name()), quoted(entry.name)),
             isPrefixed(child.name()) ? std::nullopt : mending.rename(child, entry.name));
    }
    checkElement(child, entry);
    return;
  }
  const CheckedElement* const known = parent.childNamed(child);
  if (known == nullptr)
  {
    reportUnknown(child, siblings);
    return;
  }
  checkRepeated(child, *known, siblings);
  checkElement(child, *known);
}

void Checker::checkNoElement(const Node& node, const CheckedElement& parent)
{
  if (unfinished != nullptr && node.isEntityReference())
  {
    return; // what it stands for is not known yet
  }
  if (parent.format.holds == format::Holds::Entries)
  {
    const QString entry = quoted(parent.children.front().name);
    report(RuleId::EmptyEntry, textOf(node),
           node.isText()
               ? QStringLiteral("the text %1 in %2 is read as an empty %3; put it into one")
                     .arg(quoted(node.text().trimmed()), quoted(parent.name), entry)
               : QStringLiteral("%1 in %2 is read as an empty %3; move it out")
                     .arg(kindOf(node), quoted(parent.name), entry));
  }
  else if (node.isText())
  {
    const QString text = node.text().trimmed();
    if (!text.isEmpty())
    {
      report(RuleId::SkippedText, textOf(node),
             QStringLiteral(
                 "%1 holds no text, so %2 is skipped; put it where it belongs, or remove it")
                 .arg(quoted(parent.name), quoted(text)));
    }
    else if (node.isCData())
    {
      report(RuleId::SkippedText, whole(node),
             QStringLiteral("%1 holds no text, so the CDATA section is skipped; remove it")
                 .arg(quoted(parent.name)));
    }
  }
  else if (parent.childNamed(node) != nullptr)
  {
    report(
        RuleId::InstructionAsElement, nameOf(node),
        QStringLiteral("the processing instruction %1 is read as an element; rename or remove it")
            .arg(quoted(node.name())));
  }
  else
  {
    reportNotKept(node);
  }
}

} // namespace vesk::check
