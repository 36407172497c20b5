// SPDX-License-Identifier: Apache-2.0
#include <package/xml/text.hpp>

#include <algorithm>
#include <cstring>

namespace vesk
{
namespace
{
bool isForbiddenInXml(QChar c)
{
  const ushort code = c.unicode();
  return (code < 0x20 && code != '\t' && code != '\n' && code != '\r') || code >= 0xFFFE;
}

/// The letters are those on which the toolkit and the XML recommendation agree.
bool startsXmlName(QChar c)
{
  const ushort code = c.unicode();
  if (code < 0x80)
  {
    return c.isLetter() || c == u'_';
  }
  const bool inRecommendation =
      (code >= 0xC0 && code <= 0x2FF && code != 0xD7 && code != 0xF7) ||
      (code >= 0x370 && code <= 0x1FFF && code != 0x37E) || (code >= 0x2C00 && code <= 0x2FEF) ||
      (code >= 0x3001 && code <= 0xD7FF) || (code >= 0xF900 && code <= 0xFDCF) ||
      (code >= 0xFDF0 && code <= 0xFFFD);
  return inRecommendation && c.isLetter() && c.category() != QChar::Letter_Modifier;
}

bool continuesXmlName(QChar c)
{
  return startsXmlName(c) || (c >= u'0' && c <= u'9') || c == u'-' || c == u'.';
}
} // namespace

QString toQString(const std::string& text)
{
  // The toolkit counts in int, and its texts take no more than about 2^30 characters.
  constexpr std::size_t most = 1 << 30;
  return QString::fromUtf8(text.c_str(),
                           static_cast<int>(std::min(std::strlen(text.c_str()), most)));
}

std::string fromQString(const QString& text)
{
  std::string utf8;
  assignUtf8(utf8, text);
  utf8.resize(std::strlen(utf8.c_str()));
  return utf8;
}

void assignUtf8(std::string& utf8, const QString& text)
{
  // Most text is ASCII, and copying that costs a fraction of the toolkit's conversion.
  utf8.resize(static_cast<std::size_t>(text.size()));
  ushort allBits = 0;
  std::transform(text.cbegin(), text.cend(), utf8.begin(),
                 [&allBits](QChar c)
                 {
                   allBits |= c.unicode();
                   return static_cast<char>(c.unicode());
                 });
  if (allBits >= 0x80)
  {
    utf8 = text.toUtf8().toStdString();
  }
}

QString toXmlText(const std::string& text)
{
  QString result = toQString(text);
  if (text.compare(0, 3, "\xEF\xBB\xBF") == 0)
  {
    result.prepend(QChar::ByteOrderMark); // which toQString() has dropped
  }
  if (std::any_of(result.cbegin(), result.cend(), isForbiddenInXml))
  {
    const QChar* const end = std::remove_if(result.begin(), result.end(), isForbiddenInXml);
    result.truncate(static_cast<int>(end - result.begin()));
  }
  return result;
}

bool isXmlName(const QString& name)
{
  return !name.isEmpty() && startsXmlName(name.front()) &&
         std::all_of(name.cbegin() + 1, name.cend(), continuesXmlName);
}

} // namespace vesk
