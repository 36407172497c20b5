// SPDX-License-Identifier: Apache-2.0
// Checks values that the readers take as they are against the description of the format.
#include <check/checker.hpp>
#include <check/elementtext.hpp>

#include <QDir>

namespace vesk::check
{
namespace
{
bool leavesPackage(const QString& path)
{
  const QString clean = QDir::cleanPath(path);
  return QDir::isAbsolutePath(path) || clean == QLatin1String("..") ||
         clean.startsWith(QLatin1String("../"));
}
} // namespace

void Checker::checkValues(const Node& element, const CheckedElement& checked)
{
  if (checked.format.holds == format::Holds::Text && checked.format.isRepeatable)
  {
    checkEntry(element, checked);
  }
  for (const CheckedAttribute& attribute : checked.attributes)
  {
    const QString value = element.attribute(attribute.name);
    switch (attribute.format.type)
    {
    case format::Type::Language:
      checkLanguage(valueOf(element, attribute.name), checked, value);
      checkListed(valueOf(element, attribute.name), checked, value);
      break;
    case format::Type::Path:
    case format::Type::PathStem:
      checkPath(element, attribute, value);
      break;
    case format::Type::Text:
    case format::Type::Version:
    case format::Type::Flag:
      break;
    }
  }
  if (checked.ownCheck != nullptr)
  {
    checked.ownCheck(*this, element);
  }
}

void Checker::checkEntry(const Node& entry, const CheckedElement& checked)
{
  const QString text = entry.text();
  if (checked.format.type == format::Type::Language)
  {
    checkLanguage(textOf(entry), checked, text);
  }
  // In a CDATA section, blanks are written and read as they are.
  else if (checked.format.isCdata ? text.isEmpty() : isBlank(text))
  {
    report(RuleId::EmptyText, whole(entry),
           QStringLiteral("the text is empty, and not written back"));
  }
}

void Checker::checkLanguage(const Subject& subject, const CheckedElement& checked,
                            const QString& language)
{
  if (language.isEmpty())
  {
    report(RuleId::EmptyLanguage, subject, QStringLiteral("the entry has no language"));
  }
  // Where all count, a language may have any number of texts.
  if (checked.format.several != format::Several::Count && !lists[&checked].insert(language).second)
  {
    report(RuleId::RepeatedLanguage, subject,
           QStringLiteral("the language %1 is there already").arg(quoted(language)));
  }
  if (codes.noticeOdd(language))
  {
    report(
        RuleId::MixedLanguageCodes, subject,
        QStringLiteral("%1 is written otherwise than the codes before it").arg(quoted(language)));
  }
}

void Checker::checkListed(const Subject& subject, const CheckedElement& checked,
                          const QString& language)
{
  const bool isDescription = checked.keeps == format::Keeps::DescriptionLanguages;
  const bool isListed = checked.keeps == format::Keeps::All || language.isEmpty() ||
                        (isDescription ? packageLanguages.isDescribed(language)
                                       : packageLanguages.isSupported(language));
  if (!isListed)
  {
    report(RuleId::UnlistedLanguage, subject,
           QStringLiteral("the package does not list the language %1 among the %2 languages")
               .arg(quoted(language),
                    isDescription ? QStringLiteral("description") : QStringLiteral("supported")));
  }
}

void Checker::checkPath(const Node& element, const CheckedAttribute& attribute, const QString& path)
{
  const Subject subject = valueOf(element, attribute.name);
  const bool isWhole = attribute.format.type == format::Type::Path;
  if (path.isEmpty())
  {
    report(RuleId::EmptyPath, subject,
           QStringLiteral("%1 has no path").arg(quoted(element.name())));
  }
  else if (leavesPackage(path))
  {
    report(RuleId::PathOutsidePackage, subject,
           QStringLiteral("the path %1 leaves the package").arg(quoted(path)));
  }
  else if (!packageFolder.isEmpty() && !findFile(packageFolder + '/' + path, isWhole))
  {
    report(RuleId::MissingFile, subject,
           QStringLiteral("the package has no file or folder %1").arg(quoted(path)));
  }
}

bool Checker::findFile(const QString& path, bool isWhole)
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

} // namespace vesk::check
