// SPDX-License-Identifier: Apache-2.0
// Checks values that the readers take as they are against the description of the format.
#include <check/checker.hpp>
#include <check/confusions.hpp>
#include <check/elementtext.hpp>
#include <check/languageform.hpp>
#include <package/xml/names.hpp>

#include <algorithm>

namespace vesk::check
{
namespace
{
RuleId ruleOfMissing(const CheckedElement& element, const CheckedAttribute& attribute)
{
  switch (attribute.format.type)
  {
  case format::Type::Language:
    return RuleId::EmptyLanguage;
  case format::Type::Path:
  case format::Type::PathStem:
    return RuleId::EmptyPath;
  case format::Type::Text:
  case format::Type::Version:
  case format::Type::Flag:
    break;
  }
  return &element == &checkedPackage()                                 ? RuleId::MissingIdentity
         : attribute.format.name == manifestNames().topicName.inUtf8() ? RuleId::EmptyTopic
                                                                       : RuleId::MissingAttribute;
}

/// Of a value that is not blank altogether.
bool hasBlanksAround(const QString& value)
{
  return !isBlank(value) && (value.front().isSpace() || value.back().isSpace());
}
} // namespace

void Checker::checkValues(const Node& element, const CheckedElement& checked)
{
  if (checked.format.holds == format::Holds::Text)
  {
    checkTextValue(element, checked);
  }
  for (const CheckedAttribute& attribute : checked.attributes)
  {
    if (!isMisspelt(attribute.name))
    {
      checkAttribute(element, checked, attribute);
    }
  }
  if (checked.ownCheck != nullptr)
  {
    checked.ownCheck(*this, element);
  }
}

void Checker::checkTextValue(const Node& element, const CheckedElement& checked)
{
  const QString text = element.text();
  const bool isEntry = checked.format.isRepeatable;
  if (checked.format.type == format::Type::Language)
  {
    if (isBlank(text))
    {
      report(isEntry ? RuleId::EmptyLanguage : RuleId::MissingElement, textOf(element),
             QStringLiteral("%1 is empty; write a language into it").arg(quoted(checked.name)));
    }
    checkLanguage(textOf(element), checked, text);
  }
  // In a CDATA section, blanks are written and read as they are.
  else if (isEntry && (checked.format.isCdata ? text.isEmpty() : isBlank(text)))
  {
    report(RuleId::EmptyText, whole(element),
           QStringLiteral("%1 is empty, and not written back; fill or remove it")
               .arg(quoted(element.name())));
  }
  else if (!checked.format.usual.empty() && !isBlank(text))
  {
    checkUsual(textOf(element), checked.format, text);
  }
}

void Checker::checkAttribute(const Node& element, const CheckedElement& checked,
                             const CheckedAttribute& attribute)
{
  const QString value = element.attribute(attribute.name);
  const bool isEmpty = isBlank(value);
  if (isEmpty && attribute.format.isRequired)
  {
    reportMissing(element, checked, attribute);
  }
  const Subject subject = valueOf(element, attribute.name);
  switch (attribute.format.type)
  {
  case format::Type::Language:
    checkLanguage(subject, checked, value);
    break;
  case format::Type::Path:
  case format::Type::PathStem:
    if (!isEmpty)
    {
      checkPath(subject, attribute.format.type == format::Type::Path, value);
    }
    break;
  case format::Type::Version:
    checkBlanks(subject, value);
    break;
  case format::Type::Text:
    if (!isEmpty && !attribute.format.usual.empty())
    {
      checkUsual(subject, attribute.format, value);
    }
    break;
  case format::Type::Flag:
    break;
  }
}

void Checker::checkNeededChildren(const Node& element, const Siblings& children,
                                  const std::set<QString>& missing)
{
  for (const CheckedElement& child : children.checkedParent.children)
  {
    if (child.format.isRequired && !child.format.isRepeatable &&
        !children.total.contains(child.name) && missing.count(child.name) == 0)
    {
      report(RuleId::MissingElement, nameOf(element),
             QStringLiteral("%1 holds no %2; add one")
                 .arg(quoted(element.name()), quoted(child.name)));
    }
  }
}

void Checker::reportMissing(const Node& element, const CheckedElement& checked,
                            const CheckedAttribute& attribute)
{
  const QString name = quoted(attribute.name);
  report(ruleOfMissing(checked, attribute), valueOf(element, attribute.name),
         element.hasAttribute(attribute.name)
             ? QStringLiteral("the attribute %1 is empty; fill it").arg(name)
             : QStringLiteral("%1 has no attribute %2; add it").arg(quoted(element.name()), name));
}

void Checker::checkBlanks(const Subject& subject, const QString& given)
{
  if (hasBlanksAround(given))
  {
    reportBlanks(subject, given);
  }
}

std::optional<std::size_t> Checker::reportBlanks(const Subject& subject, const QString& given)
{
  if (!countOne(RuleId::SurroundingBlanks, subject))
  {
    return std::nullopt;
  }
  const QString trimmed = given.trimmed();
  return add(RuleId::SurroundingBlanks, subject,
             QStringLiteral("%1 has blanks around it, which count; write %2")
                 .arg(quoted(given), quoted(trimmed)),
             subject.attribute.isEmpty()
                 ? mending.setText(subject.node, trimmed)
                 : mending.setValue(subject.node, subject.attribute, trimmed));
}

void Checker::checkUsual(const Subject& subject, const format::Entry& entry, const QString& given)
{
  const QString value = given.trimmed();
  const auto isMeant = [&value](const std::string& usual)
  { return value == QLatin1String(usual.data(), static_cast<int>(usual.size())); };
  if (std::any_of(entry.usual.begin(), entry.usual.end(), isMeant))
  {
    checkBlanks(subject, given);
  }
  else if (countOne(RuleId::UnknownNature, subject))
  {
    std::vector<QString> usual;
    for (const std::string& known : entry.usual)
    {
      usual.push_back(QString::fromStdString(known));
    }
    const std::vector<QString> probable = probablyMeant(value, usual);
    const bool isOne = probable.size() == 1;
    const bool isSure = isOne && isSurelyMeant(value, probable.front());
    add(RuleId::UnknownNature, subject,
        QStringLiteral("nobody knows the %1 %2; write %3")
            .arg(QString::fromStdString(entry.name), quoted(given),
                 choiceOf(isOne ? probable : usual)),
        !isSure ? std::nullopt
        : subject.attribute.isEmpty()
            ? mending.setText(subject.node, probable.front())
            : mending.setValue(subject.node, subject.attribute, probable.front()));
  }
}

void Checker::checkLanguage(const Subject& subject, const CheckedElement& checked,
                            const QString& given)
{
  checkRepeatedLanguage(subject, checked, given);
  const QString language = given.trimmed();
  if (language.isEmpty())
  {
    return;
  }
  if (language.size() != given.size())
  {
    const std::optional<std::size_t> number = reportBlanks(subject, given);
    if (number && !subject.attribute.isEmpty())
    {
      noteNewKey(*number, checked, language);
    }
  }
  else if (!isLanguageForm(language))
  {
    report(RuleId::LanguageForm, subject,
           QStringLiteral(R"(%1 is no code of a language; write one such as "en" or "en_US")")
               .arg(quoted(language)));
  }
  else if (checked.format.isRepeatable)
  {
    checkSeparator(subject, language);
  }
  checkListed(subject, checked, language);
}

void Checker::checkRepeatedLanguage(const Subject& subject, const CheckedElement& checked,
                                    const QString& language)
{
  const bool isListed = checked.format.several == format::Several::CountOnce;
  // Where all count, a language may have any number of texts.
  const bool isOnce = isListed || checked.format.several == format::Several::LastOfKeyCounts;
  if (isOnce && !insert(lists[&checked], language) && countOne(RuleId::RepeatedLanguage, subject))
  {
    add(RuleId::RepeatedLanguage, subject,
        (isListed ? QStringLiteral("the language %1 is there already; remove this one")
                  : QStringLiteral("the language %1 is there already, and this replaces it; keep "
                                   "one of them"))
            .arg(quoted(language)),
        isListed ? mending.remove(subject.node) : std::nullopt);
  }
}

void Checker::checkSeparator(const Subject& subject, const QString& language)
{
  const QString alike = codes.alike(language);
  if (!alike.isEmpty())
  {
    report(RuleId::MixedLanguageCodes, subject,
           QStringLiteral("%1 is written otherwise than the codes before it; write %2")
               .arg(quoted(language), quoted(alike)));
  }
}

void Checker::checkListed(const Subject& subject, const CheckedElement& checked,
                          const QString& language)
{
  const bool isDescription = checked.keeps == format::Keeps::DescriptionLanguages;
  const bool isListed = checked.keeps == format::Keeps::All ||
                        (isDescription ? packageLanguages.isDescribed(language)
                                       : packageLanguages.isSupported(language));
  if (!isListed)
  {
    report(RuleId::UnlistedLanguage, subject,
           QStringLiteral("%1 is not listed in %2; add it there, or remove the text")
               .arg(quoted(language), quoted(isDescription ? manifestNames().descriptionLanguages
                                                           : manifestNames().supportedLanguages)));
  }
}

void Checker::checkPath(const Subject& subject, bool isWhole, const QString& given)
{
  const QString path = given.trimmed();
  checkBlanks(subject, given);
  if (leavesPackage(path))
  {
    report(RuleId::PathOutsidePackage, subject,
           QStringLiteral("the path %1 leaves the package; write one relative to its folder")
               .arg(quoted(path)));
  }
  else if (isForeign(path))
  {
    report(RuleId::PathOutsidePackage, subject,
           QStringLiteral(R"(the path %1 leads nowhere on a robot; write one with "/" between )"
                          "folders, relative to the package's")
               .arg(quoted(path)));
  }
  else if (files.areKnown() && !files.has(path, isWhole))
  {
    report(RuleId::MissingFile, subject,
           QStringLiteral("the package has no file or folder %1").arg(quoted(path)));
  }
}

void Checker::checkProgram(const Subject& commandLine, const QString& given)
{
  const QString program = files.areKnown() ? programIn(given) : QString();
  if (!program.isEmpty() && !files.has(program, true))
  {
    report(RuleId::MissingFile, commandLine,
           QStringLiteral("the package has no program %1").arg(quoted(program)));
  }
}

bool Checker::isFirst(RuleId id, const QString& name) { return insert(names[id], name); }

} // namespace vesk::check
