// SPDX-License-Identifier: Apache-2.0
#include <package/xml/readalike.hpp>

#include <QString>

#include <algorithm>
#include <charconv>

namespace vesk
{
namespace
{
using source::Kind;
using source::Node;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool hasReferenceBeyond16Bits(std::string_view text)
{
  constexpr std::string_view begin = "&#";
  for (std::size_t at = text.find(begin); at != std::string_view::npos; at = text.find(begin, at))
  {
    at += begin.size();
    const bool isHexadecimal = text.substr(at, 1) == "x";
    const char* const digits = text.data() + at + (isHexadecimal ? 1 : 0);
    std::uint32_t number = 0;
    const auto result =
        std::from_chars(digits, text.data() + text.size(), number, isHexadecimal ? 16 : 10);
    if (result.ec == std::errc::result_out_of_range || number > 0xFFFF)
    {
      return true;
    }
  }
  return false;
}

/// Whether a text begins with a blank of another script, with or without blanks of XML in front.
bool beginsWithOtherBlank(std::string_view text)
{
  constexpr std::size_t mostBytes = 4; // of a character
  const std::size_t begin = std::min(text.find_first_not_of(" \t\n\r"), text.size());
  const std::string_view character = text.substr(begin, mostBytes);
  return !character.empty() && static_cast<unsigned char>(character.front()) >= 0x80 &&
         QString::fromUtf8(character.data(), static_cast<int>(character.size())).front().isSpace();
}

class Comparison
{
public:
  Comparison(const source::Document& parsed, Namespaces processing)
      : document(parsed), namespaces(processing)
  {}

  bool isReadAlike() const
  {
    const std::string_view text = document.text();
    return !document.error()
           // Decoders differ in what they make of bytes that make no sense, and in the names of
           // encodings that they know. That of a text is UTF-8 whatever it declares.
           && document.bytes().data() == text.data()
           // The toolkit keeps carriage returns; XML demands "\n" in place of each line end.
           && text.find('\r') == std::string_view::npos
           // The toolkit's decoder drops some byte order marks within a text. In front, both drop it.
           && text.find(byteOrderMark, 1) == std::string_view::npos
           // The toolkit takes the 16 low bits of the number as the character.
           && !hasReferenceBeyond16Bits(text) &&
           // The toolkit takes the encoding from whatever begins so.
           (text.substr(0, 5) != "<?xml" ||
            document.nodes().begin()->kind() == Kind::Declaration) &&
           areReadAlike(document.nodes());
  }

private:
  bool areReadAlike(const Node::ChildRange& nodes) const
  {
    for (const Node& node : nodes)
    {
      if (!isReadAlike(node))
      {
        return false;
      }
    }
    return true;
  }

  bool isReadAlike(const Node& node) const
  {
    switch (node.kind())
    {
    case Kind::
        DocumentType: // with entities that bring markup, and attributes that are not in the text
    case Kind::Reference:
      return false;
    case Kind::Instruction:
      return isReadAlike(node.name());
    case Kind::Element:
      return isReadAlike(node.name()) && areReadAlike(node.attributes()) &&
             areReadAlike(node.children());
    case Kind::Text:
      // The toolkit drops a text of nothing but blanks of any script.
      return !beginsWithOtherBlank(node.value());
    default:
      return true;
    }
  }

  bool areReadAlike(const Node::AttributeRange& attributes) const
  {
    return std::all_of(attributes.begin(), attributes.end(),
                       [this](const source::Attribute& attribute)
                       {
                         const std::string_view standing = document.text(attribute.valueRange());
                         // The toolkit keeps tabs and line feeds; XML demands a blank for each.
                         return isReadAlike(attribute.name()) &&
                                (attribute.value() == standing ||
                                 standing.find_first_of("\t\n") == std::string_view::npos);
                       });
  }

  bool isReadAlike(std::string_view name) const
  {
    // Which letters of other scripts a name can have depends on the age of a parser.
    const bool isAscii = std::all_of(name.begin(), name.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    // Where they are processed, namespaces have rules of their own for what is well-formed.
    return isAscii && (namespaces == Namespaces::Ignored ||
                       (name.find(':') == std::string_view::npos && name != "xmlns"));
  }

  const source::Document& document;
  Namespaces namespaces;
};
} // namespace

std::optional<source::Document> parseReadAlike(std::string& bytes, Namespaces namespaces)
{
  source::Document document = source::Document::parse(std::move(bytes));
  if (!Comparison(document, namespaces).isReadAlike())
  {
    bytes = document.bytes();
    return std::nullopt;
  }
  return document;
}

} // namespace vesk
