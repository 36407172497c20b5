// SPDX-License-Identifier: Apache-2.0
#include "readback.hpp"

#include "support.hpp"

#include <format/format.hpp>
#include <vesk/anyvalue.hpp>

#include <QString>

#include <algorithm>
#include <set>

namespace format = vesk::format;
using vesk::AnyReference;

namespace
{
using Texts = std::map<std::string, std::string>;
using Lists = std::map<std::string, std::list<std::string>>;

bool isUnwritable(QChar c)
{
  return c.unicode() >= 0xFFFE || (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r');
}

/// What is read back of a text that is written as an attribute or in a CDATA section.
std::string carried(const std::string& text)
{
  const std::string upToNul = text.substr(0, text.find('\0'));
  // Converts to UTF-16, which replaces invalid UTF-8. The "x" in front keeps a byte order mark.
  QString decoded = QString::fromUtf8(('x' + upToNul).c_str()).mid(1);
  decoded.truncate(static_cast<int>(std::remove_if(decoded.begin(), decoded.end(), isUnwritable) -
                                    decoded.begin()));
  return decoded.toStdString();
}

/// What is read back of an element's text; the toolkit drops a text of nothing but blanks.
std::string carriedInElement(const std::string& text)
{
  const std::string left = carried(text);
  const QString decoded = QString::fromStdString('x' + left).mid(1);
  const bool isBlank =
      std::all_of(decoded.begin(), decoded.end(), [](QChar c) { return c.isSpace(); });
  return isBlank ? std::string() : left;
}

using Carry = std::string (*)(const std::string& text);

Texts readBack(const Texts& texts, Carry asCarried)
{
  Texts read;
  for (const auto& [key, text] : texts)
  {
    if (!text.empty())
    {
      read[carried(key)] = asCarried(text);
    }
  }
  return read;
}

Texts readBackComplete(Texts texts)
{
  texts.erase(std::string());
  return readBack(texts, carried);
}

Lists readBack(const Lists& lists, Carry asCarried)
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

std::list<std::string> readBack(const std::list<std::string>& texts, bool areCountedOnce,
                                Carry asCarried)
{
  std::list<std::string> read;
  std::set<std::string> all;
  for (const std::string& text : texts)
  {
    if (all.insert(asCarried(text)).second || !areCountedOnce)
    {
      read.push_back(asCarried(text));
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

/// Changes the part of a record that an element or its attribute holds to what is read back.
void makeReadBack(const AnyReference& value, const format::Element& element, bool isAttribute)
{
  const format::Element& entry =
      element.holds == format::Holds::Entries ? element.children.front() : element;
  const auto asCarried = isAttribute || entry.isCdata || entry.holds != format::Holds::Text
                             ? carried
                             : carriedInElement;
  if (element.holds == format::Holds::Names)
  {
    auto& names = value.as<std::list<std::string>>();
    names = readBackPermissions(names);
  }
  else if (value.is<std::string>())
  {
    value.set(asCarried(value.as<std::string>()));
  }
  else if (value.is<Texts>())
  {
    auto& texts = value.as<Texts>();
    texts = element.written == format::Written::UnlessIncomplete ? readBackComplete(texts)
                                                                 : readBack(texts, asCarried);
  }
  else if (value.is<Lists>())
  {
    auto& lists = value.as<Lists>();
    lists = readBack(lists, asCarried);
  }
  else if (value.is<std::list<std::string>>())
  {
    auto& texts = value.as<std::list<std::string>>();
    texts = readBack(texts, entry.several == format::Several::CountOnce, asCarried);
  }
  else if (value.type()->kind() == vesk::TypeKind::List)
  {
    for (const AnyReference& record : value.elements())
    {
      makeReadBack(record);
    }
  }
}

void makeReadBack(const AnyReference& record)
{
  for (const std::string& name : record.memberNames())
  {
    const AnyReference value = record.member(name);
    const format::Place place = format::placeOf(record.type()->name(), name);
    if (place.element == nullptr) // no part of a manifest
    {
      value.set(vesk::AnyValue(*value.type()));
    }
    else
    {
      makeReadBack(value, *place.element, place.attribute != nullptr);
    }
  }
}
} // namespace

vesk::PackageInfo readBackOf(const vesk::PackageInfo& package)
{
  vesk::PackageInfo read(package);
  makeReadBack(AnyReference(read));
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

  vesk::edit::MemoryFile file;
  require(package.saveToManifestFile(file), "cannot be written");
  vesk::PackageInfo fromFile;
  require(loadFile(fromFile, file.content.toStdString()), "what was written does not read");
  requireEqual(vesk::AnyConstReference(fromText), vesk::AnyConstReference(fromFile),
               "file and text differ");
  return fromText;
}
