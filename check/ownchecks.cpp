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

void checkIdentity(Checker& checker, const Node& package)
{
  for (const format::Attribute& needed : format::package().attributes)
  {
    const XmlName attribute = needed.name;
    if (needed.isRequired && package.attribute(attribute).isEmpty())
    {
      checker.report(RuleId::MissingIdentity, valueOf(package, attribute),
                     QStringLiteral("the package has no %1").arg(QString(attribute)));
    }
  }
}

void reportDescriptionLanguages(Checker& checker, const Node& languages)
{
  checker.report(RuleId::DescriptionLanguages, nameOf(languages),
                 QStringLiteral("description languages are read by PackageInfo only"));
}

void checkName(Checker& checker, const Node& describedLanguage)
{
  const QString language = describedLanguage.text();
  if (!language.isEmpty() && !checker.languages().isNamed(language))
  {
    checker.report(RuleId::UnnamedLanguage, textOf(describedLanguage),
                   QStringLiteral("the package has no name in %1").arg(quoted(language)));
  }
}

void reportWebContent(Checker& checker, const Node& content)
{
  checker.report(RuleId::WebContent, nameOf(content),
                 QStringLiteral("web content is read by loadManifest only"));
}

void checkTopicName(Checker& checker, const Node& dialog)
{
  if (dialog.attribute(n().topicName).isEmpty())
  {
    checker.report(RuleId::EmptyTopic, valueOf(dialog, n().topicName),
                   QStringLiteral("the dialog has no topic name"));
  }
}

void checkTopic(Checker& checker, const Node& topic)
{
  if (topic.attribute(n().language).isEmpty() || topic.attribute(n().path).isEmpty())
  {
    checker.report(RuleId::UnwrittenTopic, nameOf(topic),
                   QStringLiteral("the topic is not written back without a language and a path"));
  }
}

void checkAutorun(Checker& checker, const Node& service)
{
  const XmlName& attribute = n().autorun;
  const QString value = service.attribute(attribute, QStringLiteral("false"));
  if (value == QLatin1String("1"))
  {
    checker.report(
        RuleId::AutorunOne, valueOf(service, attribute),
        QStringLiteral("%1 is yes for loadManifest, but no for PackageInfo").arg(quoted(value)));
  }
  else if (value != QLatin1String("true") && value != QLatin1String("false"))
  {
    checker.report(RuleId::AutorunValue, valueOf(service, attribute),
                   QStringLiteral("%1 means no; only \"true\" means yes").arg(quoted(value)));
  }
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
                   QStringLiteral("%1 %2 is above %3 %4")
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
      {"/package", checkIdentity},
      {"/package/descriptionLanguages", reportDescriptionLanguages},
      {"/package/descriptionLanguages/language", checkName},
      {"/package/contents/dialogContent", checkTopicName},
      {"/package/contents/dialogContent/topic", checkTopic},
      {"/package/contents/webContent", reportWebContent},
      {"/package/requirements/mirelRequirement", checkSoftware},
      {"/package/requirements/robotRequirement", checkRobot},
      {"/package/services/service", checkAutorun}};
  return checks;
}

} // namespace vesk::check
