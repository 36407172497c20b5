// SPDX-License-Identifier: Apache-2.0
#include <package/languagecodes.hpp>
#include <package/languageinfo.hpp>
#include <package/languageinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/reporting.hpp>
#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>
#include <package/xml/writing.hpp>

#include <QDomElement>

#include <ostream>
#include <utility>

namespace vesk
{

LanguageInfo::LanguageInfo() : record(std::make_unique<LanguageInfoPrivate>())
{
  record->owner = this;
}

LanguageInfo::LanguageInfo(const LanguageInfo& other)
    : record(std::make_unique<LanguageInfoPrivate>(*other.record))
{
  record->owner = this;
}

LanguageInfo::LanguageInfo(LanguageInfo&& other) noexcept : record(std::move(other.record))
{
  if (record)
  {
    record->owner = this;
  }
}

LanguageInfo LanguageInfo::operator=(const LanguageInfo& other)
{
  LanguageInfo copy(other); // first: when memory runs out, nothing is assigned
  assignRecord(record, other.record);
  record->owner = this;
  return copy;
}

LanguageInfo::~LanguageInfo() = default;

std::string LanguageInfo::path() const { return record->path; }

void LanguageInfo::setPath(const std::string& path) { record->path = path; }

std::string LanguageInfo::locale() const { return record->locale; }

void LanguageInfo::setLocale(const std::string& locale) { record->locale = locale; }

std::string LanguageInfo::engineName() const { return record->engineName; }

void LanguageInfo::setEngineName(const std::string& name) { record->engineName = name; }

std::string LanguageInfo::engineVersion() const { return record->engineVersion; }

void LanguageInfo::setEngineVersion(const std::string& version) { record->engineVersion = version; }

std::string LanguageInfo::name(const std::string& lang) const
{
  return textOrEmpty(record->langToName, lang);
}

const std::map<std::string, std::string>& LanguageInfo::names() const { return record->langToName; }

void LanguageInfo::setName(const std::string& name, const std::string& lang)
{
  record->langToName[lang] = name;
}

bool LanguageInfoPrivate::loadFromManifest(QDomNode& node)
{
  return loadFromManifest(XmlNode(node));
}

bool LanguageInfoPrivate::loadFromManifest(const XmlNode& node)
{
  const ManifestNames& names = manifestNames();
  LanguageInfoPrivate& record = recordOf(*owner);
  record.path = node.attribute(names.path);
  for (const XmlNode& child : Children(node))
  {
    if (child.isNamed(names.names))
    {
      readLocalizedTexts(child, record.langToName);
    }
    else if (child.isNamed(names.engine))
    {
      record.engineName = child.attribute(names.name);
      record.engineVersion = child.attribute(names.version);
    }
    else if (child.isNamed(names.locale))
    {
      record.locale = child.text();
    }
  }
  return true;
}

void LanguageInfoPrivate::saveToManifest(QDomDocument& doc, QDomNode& parent) const
{
  const ManifestNames& names = manifestNames();
  QDomElement language = appendElement(doc, parent, names.languageContent);
  setAttribute(language, names.path, path);
  QDomElement engine = appendElement(doc, language, names.engine);
  setAttribute(engine, names.name, engineName);
  setAttribute(engine, names.version, engineVersion);
  QDomElement localeElement = appendElement(doc, language, names.locale);
  addTextNode(doc, localeElement, locale);
  addLocalizedDataElement(doc, language, langToName, names.names, names.name, names.lang);
}

std::ostream& operator<<(std::ostream& out, const LanguageInfo& language)
{
  out << "ISO 639 code: " << language.locale() << std::endl;
  out << "Relative path: " << language.path() << std::endl;
  out << "Engine name: " << language.engineName() << std::endl;
  out << "Engine version: " << language.engineVersion() << std::endl;
  out << "Names:" << std::endl;
  printTexts(out, language.names());
  return out;
}

} // namespace vesk
