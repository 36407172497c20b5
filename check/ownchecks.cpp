// SPDX-License-Identifier: Apache-2.0
// The checks that elements have of their own.
#include <check/checker.hpp>
#include <check/elementtext.hpp>
#include <package/xml/names.hpp>

#include <QStringList>

#include <optional>

namespace vesk::check
{
namespace
{
const ManifestNames& n() { return manifestNames(); }

void reportDescriptionLanguages(Checker& checker, const Node& languages)
{
  checker.report(RuleId::DescriptionLanguages, nameOf(languages),
                 QStringLiteral("only one of the two readers knows \"descriptionLanguages\""));
}

void checkName(Checker& checker, const Node& describedLanguage)
{
  const QString language = describedLanguage.text().trimmed();
  if (!language.isEmpty() && !checker.languages().isNamed(language))
  {
    checker.report(RuleId::UnnamedLanguage, textOf(describedLanguage),
                   QStringLiteral("the package has no name in %1; add one, or remove the language")
                       .arg(quoted(language)));
  }
}

void reportWebContent(Checker& checker, const Node& content)
{
  checker.report(RuleId::WebContent, nameOf(content),
                 QStringLiteral("only one of the two readers knows \"webContent\""));
}

/// Reports that several elements have a name by which they are told apart.
void checkRepeatedName(Checker& checker, RuleId id, const Node& element, const XmlName& attribute)
{
  const QString name = element.attribute(attribute).trimmed();
  const bool isPath = id == RuleId::RepeatedBehavior;
  if (!name.isEmpty() && !checker.isFirst(id, isPath ? plain(name) : name))
  {
    checker.report(id, valueOf(element, attribute),
                   QStringLiteral("an earlier %1 has the same %2 %3; write another one")
                       .arg(quoted(element.name()), quoted(attribute), quoted(name)));
  }
}

void checkBehavior(Checker& checker, const Node& behavior)
{
  checkRepeatedName(checker, RuleId::RepeatedBehavior, behavior, n().path);
}

void checkFile(Checker& checker, const Node& file)
{
  const QString path = file.attribute(n().path).trimmed();
  if (!path.isEmpty() && !checker.isFirst(RuleId::NeedlessRepeat, plain(path)))
  {
    checker.report(
        RuleId::NeedlessRepeat, valueOf(file, n().path),
        QStringLiteral("the file %1 is listed already; remove this one").arg(quoted(path)));
  }
}

void checkDialog(Checker& checker, const Node& dialog)
{
  checkRepeatedName(checker, RuleId::RepeatedTopic, dialog, n().topicName);
  if (checker.isMisspelt(n().topic))
  {
    return;
  }
  for (const Node& child : Children(dialog))
  {
    if (child.isNamed(n().topic))
    {
      return;
    }
  }
  checker.report(RuleId::DialogWithoutTopics, nameOf(dialog),
                 QStringLiteral("the dialog has no topics; add a \"topic\" for each language"));
}

void checkTopic(Checker& checker, const Node& topic)
{
  const auto isMissing = [&](const XmlName& attribute)
  { return topic.attribute(attribute).isEmpty() && !checker.isMisspelt(attribute); };
  if (isMissing(n().language) || isMissing(n().path))
  {
    checker.report(RuleId::UnwrittenTopic, nameOf(topic),
                   QStringLiteral("the topic is not written back without a language and a path"));
  }
}

void checkAutorun(Checker& checker, const Node& service)
{
  const XmlName& attribute = n().autorun;
  const QString value = service.attribute(attribute, QStringLiteral("false"));
  const auto mend = [&](const char* meant)
  { return checker.mends().setValue(service, attribute, QLatin1String(meant)); };
  if (value == QLatin1String("1"))
  {
    checker.report(RuleId::AutorunOne, valueOf(service, attribute),
                   QStringLiteral("\"autorun\" is \"1\", which one reader takes for yes and the "
                                  "other for no; write \"true\""),
                   mend("true"));
  }
  else if (value != QLatin1String("true") && value != QLatin1String("false"))
  {
    const QString meant = value.trimmed().toLower();
    const char* const sure = meant == QLatin1String("true")                    ? "true"
                             : meant == QLatin1String("false") || meant == '0' ? "false"
                                                                               : nullptr;
    checker.report(RuleId::AutorunValue, valueOf(service, attribute),
                   QStringLiteral("\"autorun\" is %1, which the readers take for no; write ")
                           .arg(quoted(value)) +
                       (sure != nullptr ? quoted(sure) : QStringLiteral("\"true\" or \"false\"")),
                   sure != nullptr ? mend(sure) : std::nullopt);
  }
}

void checkService(Checker& checker, const Node& service)
{
  checkRepeatedName(checker, RuleId::RepeatedService, service, n().name);
  checkAutorun(checker, service);
  checker.checkProgram(valueOf(service, n().execStart), service.attribute(n().execStart));
}

/// The numbers of a version without trailing zeros; none when a part of it is not a number.
std::optional<std::vector<qulonglong>> numbersIn(const QString& version)
{
  std::vector<qulonglong> numbers;
  for (const QString& part : version.split('.'))
  {
    bool isNumber = false;
    numbers.push_back(part.toULongLong(&isNumber));
    if (!isNumber)
    {
      return std::nullopt;
    }
  }
  while (!numbers.empty() && numbers.back() == 0)
  {
    numbers.pop_back();
  }
  return numbers;
}

void checkVersions(Checker& checker, const Node& element, const XmlName& least, const XmlName& most)
{
  const auto from = numbersIn(element.attribute(least));
  const auto to = numbersIn(element.attribute(most));
  if (from && to && *from > *to)
  {
    checker.report(RuleId::ReversedVersions, valueOf(element, least),
                   QStringLiteral("%1 %2 is above %3 %4, so nothing meets both")
                       .arg(QString(least), quoted(element.attribute(least)), QString(most),
                            quoted(element.attribute(most))));
  }
}

void checkSoftware(Checker& checker, const Node& requirement)
{
  checkVersions(checker, requirement, n().minVersion, n().maxVersion);
}

void checkRobot(Checker& checker, const Node& requirement)
{
  checkVersions(checker, requirement, n().minHeadVersion, n().maxHeadVersion);
  checkVersions(checker, requirement, n().minBodyVersion, n().maxBodyVersion);
}
} // namespace

const std::vector<std::pair<std::string, OwnCheck>>& ownChecks()
{
  static const std::vector<std::pair<std::string, OwnCheck>> checks{
      {"/package/descriptionLanguages", reportDescriptionLanguages},
      {"/package/descriptionLanguages/language", checkName},
      {"/package/contents/behaviorContent", checkBehavior},
      {"/package/contents/dialogContent", checkDialog},
      {"/package/contents/dialogContent/topic", checkTopic},
      {"/package/contents/webContent", reportWebContent},
      {"/package/executableFiles/file", checkFile},
      {"/package/requirements/mirelRequirement", checkSoftware},
      {"/package/requirements/robotRequirement", checkRobot},
      {"/package/services/service", checkService}};
  return checks;
}

} // namespace vesk::check
