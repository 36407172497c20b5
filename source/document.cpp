// SPDX-License-Identifier: Apache-2.0
#include "characters.hpp"
#include "treebuilder.hpp"

#include <source/document.hpp>

#include <algorithm>
#include <cctype>
#include <utility>

namespace vesk::source
{
namespace
{
constexpr std::size_t mostBytes = 0x7FFFFFFF;

LineEnd lineEndOf(std::string_view text)
{
  const std::size_t end = text.find_first_of("\r\n");
  if (end == std::string_view::npos || text[end] == '\n')
  {
    return LineEnd::Lf;
  }
  return text.substr(end, 2) == "\r\n" ? LineEnd::CrLf : LineEnd::Cr;
}

/// "UTF-16" for "utf-16le", which may be declared without the order of bytes.
std::string familyOf(std::string_view encoding)
{
  std::string family(encoding.substr(0, 6));
  std::transform(family.begin(), family.end(), family.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return family == "UTF-16" || family == "UTF-32" ? family : std::string(encoding);
}

/// Where a part of a text stands; at the beginning when it is no part.
Range rangeIn(std::string_view text, std::string_view part)
{
  if (part.empty())
  {
    return {};
  }
  const auto begin = static_cast<std::uint32_t>(part.data() - text.data());
  return {begin, begin + static_cast<std::uint32_t>(part.size())};
}

std::size_t sizeOfMark(std::string_view text)
{
  return text.substr(0, byteOrderMark.size()) == byteOrderMark ? byteOrderMark.size() : 0;
}

/// Whether the declaration agrees with what the first bytes have said; it must not decide then.
bool agrees(std::string_view declared, const Encoding& encoding)
{
  return declared.empty() || familyOf(declared) == familyOf(encoding.name) ||
         (Encoding{std::string(declared), false}.isUtf8() && encoding.isUtf8());
}
} // namespace

struct Document::Contents
{
  std::string text;
  std::string undecoded; // the bytes of the text, if it is not in UTF-8
  Encoding encoding;
  LineEnd lineEnd = LineEnd::Lf;
  Arena arena;
  const Node* first = nullptr;
  std::optional<Error> error;
};

Document::Document(std::unique_ptr<Contents> parsed) : contents(std::move(parsed)) {}
Document::Document(Document&& other) noexcept = default;
Document& Document::operator=(Document&& other) noexcept = default;
Document::~Document() = default;

Document Document::parse(std::string bytes) { return parse(std::move(bytes), BlankTexts::Kept); }

Document Document::parse(std::string bytes, BlankTexts blankTexts)
{
  auto parsed = std::make_unique<Contents>();
  parsed->encoding = encodingOf(bytes);
  const Encoding& encoding = parsed->encoding;
  parsed->text = std::move(bytes);
  std::optional<Error> undecoded;
  if (!encoding.isUtf8())
  {
    Decoded decoded = decode(parsed->text, encoding);
    const bool isDecided = encoding.hasMark || decoded.text.substr(0, 5) == "<?xml";
    if (!decoded.isKnown || !isDecided)
    {
      parsed->error = Error{decoded.isKnown ? "the text is not in " + encoding.name
                                            : "nobody knows the encoding " + encoding.name,
                            rangeIn(parsed->text, declaredEncoding(parsed->text))};
      return Document(std::move(parsed));
    }
    parsed->undecoded = std::exchange(parsed->text, std::move(decoded.text));
    if (decoded.faultyByte)
    {
      const auto end = static_cast<std::uint32_t>(parsed->text.size());
      undecoded = Error{"bytes that are no text in " + encoding.name, {end, end}};
    }
  }
  const std::string_view text = parsed->text;
  const std::string_view declared = declaredEncoding(text.substr(sizeOfMark(text)));
  if (!agrees(declared, encoding))
  {
    parsed->lineEnd = lineEndOf(text);
    parsed->error = Error{"the declaration says " + std::string(declared) +
                              ", but the text begins as one in " + encoding.name,
                          rangeIn(text, declared)};
    return Document(std::move(parsed));
  }
  Document document = withTree(std::move(parsed), blankTexts);
  if (undecoded)
  {
    document.contents->error = undecoded;
  }
  return document;
}

Document Document::parseText(std::string text, BlankTexts blankTexts)
{
  auto parsed = std::make_unique<Contents>();
  parsed->encoding.hasMark = sizeOfMark(text) > 0;
  parsed->text = std::move(text);
  return withTree(std::move(parsed), blankTexts);
}

Document Document::withTree(std::unique_ptr<Contents> parsed, BlankTexts blankTexts)
{
  const std::string_view text = parsed->text;
  if (text.size() > mostBytes)
  {
    parsed->error = Error{"a text of more than 2 GiB", {}};
    return Document(std::move(parsed));
  }
  parsed->lineEnd = lineEndOf(text);
  TreeBuilder builder(text, static_cast<std::uint32_t>(sizeOfMark(text)), blankTexts,
                      parsed->arena);
  builder.parse();
  parsed->first = builder.first();
  parsed->error = builder.error();
  return Document(std::move(parsed));
}

const std::optional<Error>& Document::error() const { return contents->error; }

const Node* Document::root() const
{
  for (const Node& node : nodes())
  {
    if (node.isElement())
    {
      return &node;
    }
  }
  return nullptr;
}

Node::ChildRange Document::nodes() const { return Node::ChildRange(contents->first); }

std::string_view Document::text() const { return contents->text; }

std::string_view Document::bytes() const
{
  return contents->undecoded.empty() ? contents->text : contents->undecoded;
}

const Encoding& Document::encoding() const { return contents->encoding; }

LineEnd Document::lineEnd() const { return contents->lineEnd; }

} // namespace vesk::source
