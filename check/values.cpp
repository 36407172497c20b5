// SPDX-License-Identifier: Apache-2.0
#include <package/xml/names.hpp>

#include <QDir>

#include <check/checker.hpp>
#include <check/elementtext.hpp>
#include <optional>

namespace vesk::check
{
namespace
{
/// The numbers of a version, without zeros at its end; none when it has other parts.
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

bool leavesPackage(const QString& path)
{
  const QString clean = QDir::cleanPath(path);
  return QDir::isAbsolutePath(path) || clean == QLatin1String("..") ||
         clean.startsWith(QLatin1String("../"));
}
} // namespace

void Checker::checkValues(const QDomElement& element, const Element& format)
{
  const ManifestNames& names = manifestNames();
  switch (format.kind)
  {
  case Kind::Package:
    for (const QString& attribute : {QString(names.uuid), QString(names.version)})
    {
      if (element.attribute(attribute).isEmpty())
      {
        report(RuleId::MissingIdentity, element,
               QStringLiteral("the package has no %1").arg(attribute), '@' + attribute);
      }
    }
    break;
  case Kind::Described:
    report(RuleId::DescriptionLanguages, element,
           QStringLiteral("description languages are read by PackageInfo only"));
    break;
  case Kind::Dialog:
    if (element.attribute(names.topicName).isEmpty())
    {
      report(RuleId::EmptyTopic, element, QStringLiteral("the dialog has no topic name"),
             '@' + QString(names.topicName));
    }
    break;
  case Kind::Topic:
    checkLanguage(element, names.language, element.attribute(names.language), format.name);
    checkPath(element, false);
    if (element.attribute(names.language).isEmpty() || element.attribute(names.path).isEmpty())
    {
      report(RuleId::UnwrittenTopic, element,
             QStringLiteral("the topic is not written back without a language and a path"));
    }
    break;
  case Kind::Service:
    checkService(element);
    break;
  case Kind::Robot:
    checkVersions(element, names.minHeadVersion, names.maxHeadVersion);
    checkVersions(element, names.minBodyVersion, names.maxBodyVersion);
    break;
  case Kind::Software:
    checkVersions(element, names.minVersion, names.maxVersion);
    break;
  case Kind::Web:
    report(RuleId::WebContent, element, QStringLiteral("web content is read by loadManifest only"));
    checkPath(element);
    break;
  case Kind::Path:
    checkPath(element);
    break;
  case Kind::Plain:
  case Kind::Texts:
  case Kind::TextLists:
  case Kind::Supported:
  case Kind::Conditions:
  case Kind::Permissions:
    break;
  }
}

void Checker::checkEntry(const QDomElement& entry, const Element& list)
{
  const ManifestNames& names = manifestNames();
  const QString text = textIn(entry);
  if (list.kind == Kind::Supported || list.kind == Kind::Described)
  {
    checkLanguage(entry, {}, text, list.name);
    if (list.kind == Kind::Described && !text.isEmpty() && !packageLanguages.isNamed(text))
    {
      report(RuleId::UnnamedLanguage, entry,
             QStringLiteral("the package has no name in %1").arg(quoted(text)));
    }
    return;
  }
  // Conditions are written as they are, blanks and all.
  if (list.kind == Kind::Conditions ? text.isEmpty() : isBlank(text))
  {
    report(RuleId::EmptyText, entry, QStringLiteral("the text is empty, and not written back"));
  }
  if (list.kind == Kind::Conditions)
  {
    return;
  }
  const QString language = entry.attribute(names.lang);
  const bool isOneALanguage = list.kind == Kind::Texts;
  checkLanguage(entry, names.lang, language, isOneALanguage ? list.name : QString());
  if (!language.isEmpty() && !(isOneALanguage ? packageLanguages.isDescribed(language)
                                              : packageLanguages.isSupported(language)))
  {
    report(RuleId::UnlistedLanguage, entry,
           QStringLiteral("the package does not list the language %1 among the %2 languages")
               .arg(quoted(language),
                    isOneALanguage ? QStringLiteral("description") : QStringLiteral("supported")));
  }
}

void Checker::checkLanguage(const QDomElement& entry, const QString& attribute,
                            const QString& language, const QString& list)
{
  const QString part = attribute.isEmpty() ? QString() : '@' + attribute;
  if (language.isEmpty())
  {
    report(RuleId::EmptyLanguage, entry, QStringLiteral("the entry has no language"), part);
  }
  if (!list.isEmpty() && !lists[list].insert(language).second)
  {
    report(RuleId::RepeatedLanguage, entry,
           QStringLiteral("the language %1 is there already").arg(quoted(language)), part);
  }
  if (codes.isOdd(language))
  {
    report(RuleId::MixedLanguageCodes, entry,
           QStringLiteral("%1 is written otherwise than the codes before it").arg(quoted(language)),
           part);
  }
}

void Checker::checkPath(const QDomElement& element, bool isWhole)
{
  const QString attribute = manifestNames().path;
  const QString path = element.attribute(attribute);
  const QString part = '@' + attribute;
  if (path.isEmpty())
  {
    report(RuleId::EmptyPath, element,
           QStringLiteral("%1 has no path").arg(quoted(element.tagName())), part);
  }
  else if (leavesPackage(path))
  {
    report(RuleId::PathOutsidePackage, element,
           QStringLiteral("the path %1 leaves the package").arg(quoted(path)), part);
  }
  else if (!packageFolder.isEmpty() && !exists(packageFolder + '/' + path, isWhole))
  {
    report(RuleId::MissingFile, element,
           QStringLiteral("the package has no file or folder %1").arg(quoted(path)), part);
  }
}

bool Checker::exists(const QString& path, bool isWhole)
{
  const QFileInfo file(path);
  if (file.exists() || isWhole)
  {
    return file.exists();
  }
  const auto [folder, isNew] = filesWithoutExtension.try_emplace(file.path());
  if (isNew)
  {
    for (const QFileInfo& other : file.dir().entryInfoList(QDir::Files))
    {
      folder->second.insert(other.completeBaseName());
    }
  }
  return folder->second.count(file.fileName()) != 0;
}

void Checker::checkService(const QDomElement& service)
{
  const QString attribute = manifestNames().autorun;
  const QString value = service.attribute(attribute, QStringLiteral("false"));
  if (value == QLatin1String("1"))
  {
    report(RuleId::AutorunOne, service,
           QStringLiteral("%1 is yes for loadManifest, but no for PackageInfo").arg(quoted(value)),
           '@' + attribute);
  }
  else if (value != QLatin1String("true") && value != QLatin1String("false"))
  {
    report(RuleId::AutorunValue, service,
           QStringLiteral("%1 means no; only \"true\" means yes").arg(quoted(value)),
           '@' + attribute);
  }
}

void Checker::checkVersions(const QDomElement& element, const QString& least, const QString& most)
{
  const auto from = numbersIn(element.attribute(least));
  const auto to = numbersIn(element.attribute(most));
  if (from && to && *from > *to)
  {
    report(RuleId::ReversedVersions, element,
           QStringLiteral("%1 %2 is above %3 %4")
               .arg(least, quoted(element.attribute(least)), most, quoted(element.attribute(most))),
           '@' + least);
  }
}

} // namespace vesk::check
