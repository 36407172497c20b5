// SPDX-License-Identifier: Apache-2.0
#include <check/elementtext.hpp>
#include <check/languages.hpp>
#include <package/xml/names.hpp>

#include <algorithm>

namespace vesk::check
{

namespace
{
/// The language codes in all sections of this name, except empty ones. Blanks around them are a fault of
/// their own.
std::list<std::string> listedIn(const Node& root, const XmlName& name)
{
  std::list<std::string> languages;
  for (const Node& section : Children(root))
  {
    if (section.isNamed(name))
    {
      for (const Node& language : Children(section))
      {
        languages.push_back(language.isElement() ? language.text().trimmed().toStdString()
                                                 : std::string());
      }
    }
  }
  languages.remove({});
  return languages;
}

std::set<QString> namedIn(const Node& root)
{
  const ManifestNames& names = manifestNames();
  std::set<QString> languages;
  for (const Node& section : Children(root))
  {
    if (section.isNamed(names.names))
    {
      for (const Node& name : Children(section))
      {
        if (name.isElement() && !isBlank(name.text()))
        {
          languages.insert(name.attribute(names.lang).trimmed());
        }
      }
    }
  }
  return languages;
}
} // namespace

PackageLanguages::PackageLanguages(const Node& root)
    : described(listedIn(root, manifestNames().descriptionLanguages)),
      supported(listedIn(root, manifestNames().supportedLanguages)), describedPrefixes(described),
      supportedPrefixes(supported), named(namedIn(root))
{}

bool PackageLanguages::isDescribed(const QString& language) const
{
  return described.empty() || describedPrefixes.matches(language.toStdString());
}

bool PackageLanguages::isSupported(const QString& language) const
{
  return supported.empty() || supportedPrefixes.matches(language.toStdString());
}

bool PackageLanguages::isNamed(const QString& language) const
{
  const auto from = named.lower_bound(language);
  return from != named.end() && from->startsWith(language);
}

QString LanguageCodes::alike(const QString& language)
{
  const auto isSeparator = [](QChar character) { return character == '-' || character == '_'; };
  const auto* const at = std::find_if(language.begin(), language.end(), isSeparator);
  if (at == language.end())
  {
    return {};
  }
  if (separator.isNull())
  {
    separator = *at;
  }
  if (*at == separator || odd.contains(language))
  {
    return {};
  }
  odd.insert(language);
  QString alike = language;
  std::replace_if(alike.begin(), alike.end(), isSeparator, separator);
  return alike;
}

} // namespace vesk::check
