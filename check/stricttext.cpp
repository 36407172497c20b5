// SPDX-License-Identifier: Apache-2.0
#include <check/stricttext.hpp>

#include <QString>

#include <algorithm>
#include <string_view>

namespace vesk::check
{
namespace
{
source::Document parsed(std::string bytes)
{
  return source::Document::parse(std::move(bytes), source::BlankTexts::LeftOut);
}

/// Blanks in place of the XML declaration, so that it says nothing of the encoding while all else
/// stays where it is.
std::string withoutDeclaration(std::string text)
{
  const std::size_t begin = text.find("<?xml");
  const std::size_t end = text.find("?>");
  if (begin <= 3 && end != std::string::npos) // a byte order mark may be in front
  {
    const auto from = text.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto to = text.begin() + static_cast<std::ptrdiff_t>(end) + 2;
    std::replace_if(
        from, to, [](char c) { return c != '\n' && c != '\r'; }, ' ');
  }
  return text;
}

/// How many bytes of the text at a place are a character in UTF-8 that XML may have; 0 when none are.
std::size_t characterSize(std::string_view text)
{
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t size = first < 0x80U   ? 1
                           : first < 0xC2U ? 0
                           : first < 0xE0U ? 2
                           : first < 0xF0U ? 3
                           : first < 0xF5U ? 4
                                           : 0;
  const bool isControl = first < 0x20U && first != '\t' && first != '\n' && first != '\r';
  const std::string_view others = text.substr(1, size > 1 ? size - 1 : 0);
  const bool isWhole =
      others.size() + 1 == size &&
      std::all_of(others.begin(), others.end(),
                  [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; });
  return isWhole && !isControl ? size : 0;
}

/// A question mark in place of each byte that is no text, so that all behind it is found where it is.
std::string withoutFaultyBytes(std::string text)
{
  for (std::size_t at = 0; at < text.size();)
  {
    const std::size_t size = characterSize(std::string_view(text).substr(at));
    if (size == 0)
    {
      text[at] = '?';
    }
    at += std::max(size, std::size_t{1});
  }
  return text;
}

bool isUnknown(const source::Encoding& encoding)
{
  return !encoding.isUtf8() && !source::decode({}, encoding).isKnown;
}

/// In which bytes that are no text do not hide what is behind them: any other byte is one character.
bool isAscii(const source::Encoding& encoding)
{
  const QString name = QString::fromStdString(encoding.name).toLower();
  return name == QLatin1String("us-ascii") || name == QLatin1String("ascii");
}

/// \p document, in which there is an error, or as much of the same text as can be parsed otherwise.
StrictText mostOf(source::Document document, const std::string& text)
{
  const std::optional<source::Error> error = document.error();
  const bool isEncodingUnclear = !(document.nodes().begin() != document.nodes().end());
  const bool isOfAscii = isAscii(document.encoding());
  if (!document.encoding().isUtf8() && !isEncodingUnclear && !isOfAscii)
  {
    return {std::move(document), error, false};
  }
  // The text has been decoded where its first bytes say how.
  const std::string readable(isEncodingUnclear ? document.text() : std::string_view(text));
  const bool isMisleading = isEncodingUnclear || isOfAscii;
  return {parsed(withoutFaultyBytes(isMisleading ? withoutDeclaration(readable) : readable)), error,
          false, isUnknown(document.encoding())};
}
} // namespace

StrictText strictTextOfBytes(const std::string& bytes)
{
  source::Document document = parsed(bytes);
  return document.error() ? mostOf(std::move(document), bytes)
                          : StrictText{std::move(document), std::nullopt, true};
}

StrictText strictTextOfText(const std::string& text)
{
  const source::Encoding encoding = source::encodingOf(text);
  if (isUnknown(encoding))
  {
    return strictTextOfBytes(text);
  }
  const bool isUtf8 = encoding.isUtf8();
  const std::string inUtf8 = isUtf8 ? text : withoutDeclaration(text);
  source::Document document = parsed(inUtf8);
  return document.error() ? mostOf(std::move(document), inUtf8)
                          : StrictText{std::move(document), std::nullopt, isUtf8};
}

} // namespace vesk::check
