// SPDX-License-Identifier: Apache-2.0
#include "readback.hpp"

#include "support.hpp"

#include <QString>

#include <algorithm>
#include <set>

using vesk::AnyReference;

namespace
{
using Texts = std::map<std::string, std::string>;
using Lists = std::map<std::string, std::list<std::string>>;

bool isUnwritable(QChar c)
{
  return c.unicode() >= 0xFFFE || (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r');
}

/// As a quoted value or in a CDATA section.
std::string carried(const std::string& text)
{
  const std::string upToNul = text.substr(0, text.find('\0'));
  // By way of UTF-16, which replaces invalid UTF-8, without taking a mark at the start for one of the
  // encoding.
  QString decoded = QString::fromUtf8(('x' + upToNul).c_str()).mid(1);
  decoded.truncate(static_cast<int>(std::remove_if(decoded.begin(), decoded.end(), isUnwritable) -
                                    decoded.begin()));
  return decoded.toStdString();
}

/// As the text of an element, where the toolkit drops blanks that are alone.
std::string carriedInElement(const std::string& text)
{
  const std::string left = carried(text);
  const QString decoded = QString::fromStdString('x' + left).mid(1);
  const bool isBlank =
      std::all_of(decoded.begin(), decoded.end(), [](QChar c) { return c.isSpace(); });
  return isBlank ? std::string() : left;
}

Texts readBack(const Texts& texts)
{
  Texts read;
  for (const auto& [key, text] : texts)
  {
    if (!text.empty())
    {
      read[carried(key)] = carriedInElement(text);
    }
  }
  return read;
}

Texts readBackTopics(const Texts& topics)
{
  Texts read;
  for (const auto& [language, path] : topics)
  {
    if (!language.empty() && !path.empty())
    {
      read[carried(language)] = carried(path);
    }
  }
  return read;
}

Lists readBack(const Lists& lists, std::string (*asCarried)(const std::string&))
{
  Lists read;
  for (const auto& [key, texts] : lists)
  {
    for (const std::string& text : texts)
    {
      if (!text.empty())
      {
        read[carried(key)].push_back(asCarried(text));
      }
    }
  }
  return read;
}

std::list<std::string> readBackLanguages(const std::list<std::string>& languages)
{
  std::list<std::string> read;
  std::set<std::string> all;
  for (const std::string& language : languages)
  {
    if (all.insert(carriedInElement(language)).second)
    {
      read.push_back(carriedInElement(language));
    }
  }
  return read;
}

std::list<std::string> readBackPermissions(const std::list<std::string>& permissions)
{
  const std::list<std::string>& supported = vesk::BehaviorInfo::supportedPermissions();
  std::list<std::string> read;
  for (const std::string& permission : permissions)
  {
    const std::string name = permission.substr(0, permission.find('\0'));
    if (std::find(supported.begin(), supported.end(), name) != supported.end() &&
        std::find(read.begin(), read.end(), name) == read.end())
    {
      read.push_back(name);
    }
  }
  return read;
}

void makeReadBack(const AnyReference& record);

void makeReadBack(const AnyReference& value, const std::string& name)
{
  if (value.is<Texts>())
  {
    auto& texts = value.as<Texts>();
    texts = name == "topics" ? readBackTopics(texts) : readBack(texts);
  }
  else if (value.is<Lists>())
  {
    auto& lists = value.as<Lists>();
    lists = readBack(lists, name == "purposeToCondition" ? carried : carriedInElement);
  }
  else if (name == "permissions")
  {
    auto& permissions = value.as<std::list<std::string>>();
    permissions = readBackPermissions(permissions);
  }
  else if (name == "supportedLanguages" || name == "descriptionLanguages")
  {
    auto& languages = value.as<std::list<std::string>>();
    languages = readBackLanguages(languages);
  }
  else if (value.is<std::string>())
  {
    auto& text = value.as<std::string>();
    text = name == "nature" || name == "locale" ? carriedInElement(text)
           : name == "categories"               ? std::string()
                                                : carried(text);
  }
  else if (value.type()->kind() == vesk::TypeKind::List)
  {
    for (const AnyReference& element : value.elements())
    {
      if (element.is<std::string>())
      {
        element.set(carried(element.as<std::string>()));
      }
      else
      {
        makeReadBack(element);
      }
    }
  }
}

void makeReadBack(const AnyReference& record)
{
  for (const std::string& name : record.memberNames())
  {
    makeReadBack(record.member(name), name);
  }
}
} // namespace

vesk::PackageInfo readBackOf(const vesk::PackageInfo& package)
{
  vesk::PackageInfo read(package);
  makeReadBack(AnyReference(read));
  read.setInstaller({});
  read.setPath({});
  return read;
}

vesk::PackageInfo writeAndRead(const vesk::PackageInfo& package)
{
  const vesk::PackageInfo expected = readBackOf(package);
  const std::string text = package.saveToManifestContent();
  vesk::PackageInfo fromText;
  require(fromText.loadFromManifestContent(text), "what was written does not read:\n" + text);
  requireEqual(vesk::AnyConstReference(expected), vesk::AnyConstReference(fromText),
               "not as written in\n" + text);

  tool::MemoryFile file;
  require(package.saveToManifestFile(file), "cannot be written");
  vesk::PackageInfo fromFile;
  require(loadFile(fromFile, file.content.toStdString()), "what was written does not read");
  requireEqual(vesk::AnyConstReference(fromText), vesk::AnyConstReference(fromFile),
               "file and text differ");
  return fromText;
}
