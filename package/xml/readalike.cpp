// SPDX-License-Identifier: Apache-2.0
#include <package/xml/readalike.hpp>

#include <QString>

#include <algorithm>
#include <charconv>

namespace vesk
{
namespace
{
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

/// Whether a text begins with a blank that XML does not know as one, with or without others in front.
bool beginsWithOtherBlank(std::string_view text)
{
  constexpr std::size_t longest = 4; // of characters, in bytes
  const std::size_t begin = std::min(text.find_first_not_of(" \t\n\r"), text.size());
  const std::string_view character = text.substr(begin, longest);
  return !character.empty() && static_cast<unsigned char>(character.front()) >= 0x80 &&
         QString::fromUtf8(character.data(), static_cast<int>(character.size())).front().isSpace();
}

/// What the two parsers are known to take for different things.
class Comparison
{
public:
  Comparison(const source::Document& parsed, Namespaces processing)
      : document(parsed), namespaces(processing)
  {}

  /// Whether none of it is in the bytes; told before they are parsed.
  static bool canBeReadAlike(std::string_view bytes)
  {
    // The toolkit keeps carriage returns; XML demands "\n" in place of each line end.
    return bytes.find('\r') == std::string_view::npos &&
           // The toolkit's decoder drops some byte order marks within a text. In front, both drop it.
           bytes.find(byteOrderMark, 1) == std::string_view::npos &&
           // The toolkit takes the 16 low bits of the number for the character.
           !hasReferenceBeyond16Bits(bytes);
  }

  bool isReadAlike() const
  {
    // What is refused is the toolkit's to judge; in other encodings the decoders differ.
    if (document.error() || document.bytes().data() != document.text().data())
    {
      return false;
    }
    const source::Node& first = *document.nodes().begin();
    return !isLikeDeclaration(first) && areReadAlike(&first);
  }

private:
  /// Whether the toolkit looks for an encoding in a node that is none but begins as "<?xml" does.
  static bool isLikeDeclaration(const source::Node& node)
  {
    return node.kind() == source::Kind::Instruction && node.name().substr(0, 3) == "xml";
  }

  bool areReadAlike(const source::Node* first) const
  {
    const source::Node* node = first;
    while (node != nullptr && isReadAlike(*node))
    {
      node = node->next();
    }
    return node == nullptr;
  }

  bool isReadAlike(const source::Node& node) const
  {
    switch (node.kind())
    {
    case source::Kind::DocumentType:
    case source::Kind::Reference:
      return false; // entities bring markup, and there are attributes that are not in the text
    case source::Kind::Declaration: // one without a version is an instruction to the toolkit
      return node.value().find("\"\"") == std::string_view::npos &&
             node.value().find("''") == std::string_view::npos;
    case source::Kind::Instruction:
      return isReadAlike(node.name());
    case source::Kind::Element:
      return isReadAlike(node.name()) && areReadAlike(node.attributes()) &&
             areReadAlike(node.firstChild());
    case source::Kind::Text:
      // The toolkit's tree lacks texts of nothing but blanks, of whatever script. In the other tree
      // those of XML's own blanks are left out.
      return !beginsWithOtherBlank(node.value());
    default:
      return true;
    }
  }

  bool areReadAlike(const source::Node::AttributeRange& attributes) const
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
  if (!Comparison::canBeReadAlike(bytes))
  {
    return std::nullopt;
  }
  source::Document document =
      source::Document::parse(std::move(bytes), source::BlankTexts::LeftOut);
  if (!Comparison(document, namespaces).isReadAlike())
  {
    bytes = document.bytes();
    return std::nullopt;
  }
  return document;
}

} // namespace vesk
