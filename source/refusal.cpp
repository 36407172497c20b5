// SPDX-License-Identifier: Apache-2.0
#include "characters.hpp"
#include "treebuilder.hpp"

#include <source/lines.hpp>

#include <algorithm>
#include <array>

namespace vesk::source
{
namespace
{
bool isInName(char c)
{
  constexpr std::string_view others = "_:-.";
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         others.find(c) != std::string_view::npos || static_cast<unsigned char>(c) >= 0x80U;
}

/// The name that begins at a place; empty when there is none.
std::string nameAt(std::string_view text, std::size_t begin)
{
  std::size_t end = begin;
  while (end < text.size() && isInName(text[end]))
  {
    ++end;
  }
  return std::string(text.substr(begin, end - begin));
}

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string inLine(std::string_view text, std::size_t offset)
{
  return " in line " + std::to_string(Lines(text).placeOf(offset).line);
}

/// What is wrong at a place in the tag that begins at \p begin; empty when that cannot be told, or the
/// place is behind the tag.
std::string refusalInTag(std::string_view text, std::size_t begin, std::size_t offset)
{
  std::size_t at = begin + 1;
  const auto skip = [&](bool (*isSkipped)(char))
  {
    while (at < offset && isSkipped(text[at]))
    {
      ++at;
    }
    return at == offset;
  };
  const std::string tagIsOpen = "the tag " + quoted('<' + nameAt(text, begin + 1)) +
                                inLine(text, begin) + " is not closed by \">\"";
  if (skip(isInName) || skip(isBlank))
  {
    return text[offset] == '<' ? tagIsOpen : std::string();
  }
  while (isInName(text[at]))
  {
    const std::string attribute = quoted(nameAt(text, at));
    if (skip(isInName) || skip(isBlank) || text[at] != '=')
    {
      return "the attribute " + attribute + " has no value";
    }
    ++at;
    if (skip(isBlank) || (text[at] != '"' && text[at] != '\''))
    {
      return "the value of the attribute " + attribute + " has to stand in quotes";
    }
    const char quote = text[at++];
    at = std::min(text.find(quote, at), static_cast<std::size_t>(offset));
    if (at == offset)
    {
      return text[offset] == '<' ? R"("<" in the value of an attribute is written "&lt;")" : "";
    }
    ++at;
    if (at == offset && isInName(text[at]))
    {
      return "a blank is missing before the next attribute";
    }
    if (at == offset || skip(isBlank))
    {
      return text[offset] == '<' ? tagIsOpen : std::string();
    }
  }
  return {};
}

Error refusalOfToken(std::string_view text, std::uint32_t offset)
{
  if (offset >= text.size())
  {
    return {"the text ends too early", {offset, offset}};
  }
  const auto [number, size] = characterAt(text, offset);
  const Range range{offset, offset + static_cast<std::uint32_t>(size == 0 ? 1 : size)};
  if (size == 0)
  {
    return {"bytes that are no text in UTF-8", range};
  }
  if (!isXmlCharacter(number))
  {
    return {"the character " + codeOf(number) + " is not allowed in XML", range};
  }
  std::size_t before = offset; // behind the character before a name, if there is a name
  while (before > 0 && (isInName(text[before - 1]) || text[before - 1] == '#'))
  {
    --before;
  }
  if (before > 0 && text[before - 1] == '&')
  {
    const auto begin = static_cast<std::uint32_t>(before - 1);
    return {before == offset ? R"("&" is written "&amp;")"
                             : "the reference " + quoted(text.substr(begin, offset - begin)) +
                                   R"( does not end with ";"; "&" itself is written "&amp;")",
            {begin, offset}};
  }
  const std::size_t tag = offset > 0 ? text.rfind('<', offset - 1) : std::string_view::npos;
  if (tag != std::string_view::npos)
  {
    if (text.substr(tag, 4) == "<!--" && text.find("-->", tag + 4) >= offset)
    {
      return {"\"--\" cannot stand within a comment", range};
    }
    if (text.substr(tag + 1, 1).find_first_of("!?/") == std::string_view::npos)
    {
      std::string message = refusalInTag(text, tag, offset);
      if (!message.empty())
      {
        return {std::move(message), range};
      }
    }
  }
  if (text.substr(offset, 3) == "]]>" || (offset >= 2 && text.substr(offset - 2, 3) == "]]>"))
  {
    return {R"("]]>" in a text is written "]]&gt;")", range};
  }
  const bool isOpening = offset > 0 && text[offset - 1] == '<';
  return {isOpening ? R"("<" in a text is written "&lt;")"
                    : quoted(text.substr(offset, size)) + " cannot stand here",
          isOpening ? Range{offset - 1, offset} : range};
}

/// The first reference from a place on that is neither to a character nor to one of the entities that
/// XML knows by itself.
std::size_t firstUnknownReference(std::string_view text, std::size_t offset)
{
  constexpr std::array known{"amp", "lt", "gt", "quot", "apos"};
  const std::size_t first = text.find('&', offset);
  std::size_t at = first;
  while (at != std::string_view::npos)
  {
    const std::string name = nameAt(text, at + 1);
    if (!name.empty() && std::find(known.begin(), known.end(), name) == known.end())
    {
      return at;
    }
    at = text.find('&', at + 1);
  }
  return std::min(first, text.size());
}

std::string refusalOfUnclosed(std::string_view text, std::uint32_t offset)
{
  const std::string_view rest = text.substr(offset);
  const char* const what = rest.substr(0, 4) == "<!--" ? "a comment"
                           : rest.substr(0, 2) == "<?" ? "an instruction"
                           : rest.substr(0, 2) == "<!" ? "a declaration"
                           : rest.substr(0, 1) == "&"  ? "a reference"
                                                       : "a tag";
  return std::string(what) + " that begins" + inLine(text, offset) + " does not end";
}
} // namespace

Error refusal(std::string_view text, XML_Error code, std::uint32_t offset,
              const std::vector<const Node*>& open, Stage stage)
{
  const auto size = static_cast<std::uint32_t>(text.size());
  if (code == XML_ERROR_UNDEFINED_ENTITY) // which may be somewhere in a tag
  {
    offset = static_cast<std::uint32_t>(firstUnknownReference(text, offset));
  }
  if (stage != Stage::Root && (code == XML_ERROR_SYNTAX || code == XML_ERROR_INVALID_TOKEN))
  {
    Error error = refusalOfToken(text, offset);
    if (error.message.find("cannot stand here") != std::string::npos)
    {
      error.message = stage == Stage::DocumentType
                          ? "the document type is not well-formed"
                          : "only comments, instructions and a document type may precede the root "
                            "element";
    }
    return error;
  }
  const std::string name = nameAt(text, offset);
  const auto nameSize = static_cast<std::uint32_t>(name.size());
  const std::size_t semicolon = text.find(';', offset);
  const Range reference{offset, semicolon == std::string_view::npos
                                    ? size
                                    : static_cast<std::uint32_t>(semicolon + 1)};
  const std::string referred = quoted(text.substr(reference.begin, reference.size()));
  switch (code)
  {
  case XML_ERROR_NO_ELEMENTS:
    if (open.empty())
    {
      return {"there is no element", {size, size}};
    }
    return {"the element " + quoted(open.back()->name()) + ", which begins" +
                inLine(text, open.back()->range().begin) + ", is not closed",
            {size, size}};
  case XML_ERROR_INVALID_TOKEN:
    return refusalOfToken(text, offset);
  case XML_ERROR_UNCLOSED_TOKEN:
    return {refusalOfUnclosed(text, offset), {offset, size}};
  case XML_ERROR_UNCLOSED_CDATA_SECTION:
    return {"a CDATA section does not end", {offset, size}};
  case XML_ERROR_PARTIAL_CHAR:
    return {"the text ends within a character", {offset, size}};
  case XML_ERROR_TAG_MISMATCH:
    return {"\"</" + name + ">\"" + inLine(text, offset) + " does not close \"<" +
                std::string(open.back()->name()) + ">\"" + inLine(text, open.back()->range().begin),
            {offset - 2, offset + nameSize}};
  case XML_ERROR_DUPLICATE_ATTRIBUTE:
    return {"the attribute " + quoted(name) + " stands twice", {offset, offset + nameSize}};
  case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
    return {"only comments and instructions may follow the root element", {offset, size}};
  case XML_ERROR_UNDEFINED_ENTITY:
    return {"nothing declares the entity " + referred +
                "; a character can be written as it is, or by its number",
            reference};
  case XML_ERROR_BAD_CHAR_REF:
    return {referred + " stands for no character that XML allows", reference};
  case XML_ERROR_RECURSIVE_ENTITY_REF:
    return {"an entity that contains itself", {offset, offset}};
  case XML_ERROR_MISPLACED_XML_PI:
    return {"the XML declaration has to stand at the very beginning", {offset, offset + 5}};
  case XML_ERROR_XML_DECL:
    return {"the XML declaration is not well-formed", {offset, offset}};
  default:
    return {XML_ErrorString(code), {offset, offset}};
  }
}

} // namespace vesk::source
