// SPDX-License-Identifier: Apache-2.0
#include "lsp/cursor.hpp"

#include <source/limits.hpp>

#include <algorithm>

namespace tool::lsp
{

namespace format = vesk::format;

namespace
{
constexpr std::string_view blanks = " \t\r\n";

bool isTag(const Markup& piece)
{
  return piece.kind != Markup::Kind::Text && piece.kind != Markup::Kind::Other;
}

/// Whether an attribute has the place in its name, or in its value.
bool isInName(const WrittenAttribute& attribute, std::size_t offset)
{
  return attribute.begin <= offset && offset <= attribute.nameEnd;
}
bool isInValue(const WrittenAttribute& attribute, std::size_t offset)
{
  return attribute.hasValue && attribute.valueBegin <= offset && offset <= attribute.valueEnd;
}

void findAttribute(Cursor& cursor, std::string_view text, std::size_t offset)
{
  using Where = Cursor::Where;
  for (std::size_t i = 0; i < cursor.attributes.size(); ++i)
  {
    const WrittenAttribute& attribute = cursor.attributes[i];
    const bool isValue = isInValue(attribute, offset);
    if (isValue || isInName(attribute, offset))
    {
      cursor.where = isValue ? Where::Value : Where::AttributeName;
      cursor.attribute = i;
      cursor.begin = isValue ? attribute.valueBegin : attribute.begin;
      cursor.end = isValue ? attribute.valueEnd : attribute.nameEnd;
      return;
    }
    if (attribute.hasValue && attribute.nameEnd < offset && offset < attribute.valueBegin)
    {
      return;
    }
  }
  if (blanks.find(text[offset - 1]) != std::string_view::npos)
  {
    cursor.where = Where::AttributeName;
    cursor.begin = cursor.end = offset;
  }
}

void findInTag(Cursor& cursor, std::string_view text, std::size_t offset)
{
  const bool isEndTag = cursor.tag.kind == Markup::Kind::EndTag;
  cursor.begin = nameBegin(cursor.tag);
  cursor.end = nameEnd(text, cursor.tag);
  if (cursor.begin <= offset && offset <= cursor.end)
  {
    cursor.where = isEndTag ? Cursor::Where::EndTagName : Cursor::Where::ElementName;
  }
  if (!isEndTag)
  {
    cursor.attributes = attributesIn(text, cursor.tag);
    if (offset > cursor.end)
    {
      findAttribute(cursor, text, offset);
    }
  }
}
} // namespace

const format::Element* childOf(const format::Element* parent, std::string_view name)
{
  if (parent == nullptr)
  {
    return nullptr;
  }
  if (parent->holds == format::Holds::Entries)
  {
    return &parent->children.front();
  }
  const auto child =
      std::find_if(parent->children.begin(), parent->children.end(),
                   [name](const format::Element& other) { return other.name == name; });
  return child == parent->children.end() ? nullptr : &*child;
}

bool OpenElements::pass(const Markup& piece)
{
  if (piece.kind == Markup::Kind::EndTag)
  {
    // No deeper than the format nests, so that what closes nothing does not take long.
    constexpr std::size_t most = 16;
    const auto last = open.rbegin() + static_cast<std::ptrdiff_t>(std::min(most, open.size()));
    const auto innermost = std::find_if(open.rbegin(), last,
                                        [name = nameIn(text, piece)](const Open& element)
                                        { return element.name == name; });
    if (innermost == last)
    {
      return false;
    }
    open.erase(innermost.base() - 1, open.end());
  }
  else if (piece.kind == Markup::Kind::StartTag && piece.isFinished && !isTooDeep)
  {
    isTooDeep = open.size() == static_cast<std::size_t>(vesk::limits::depth.most);
    open.push_back({nameIn(text, piece), formatOf(piece), piece.end});
  }
  return true;
}

const format::Element* OpenElements::formatOf(const Markup& tag) const
{
  const std::string_view name = nameIn(text, tag);
  return !open.empty()                    ? childOf(open.back().format, name)
         : name == format::package().name ? &format::package()
                                          : nullptr;
}

const format::Attribute* Cursor::attributeFormat(std::string_view text) const
{
  if (format == nullptr || !attribute)
  {
    return nullptr;
  }
  const WrittenAttribute& written = attributes[*attribute];
  const std::string_view name = text.substr(written.begin, written.nameEnd - written.begin);
  const auto known =
      std::find_if(format->attributes.begin(), format->attributes.end(),
                   [name](const format::Attribute& other) { return other.name == name; });
  return known == format->attributes.end() ? nullptr : &*known;
}

Cursor cursorAt(std::string_view text, std::size_t offset)
{
  OpenElements elements(text);
  Cursor cursor;
  cursor.where = Cursor::Where::Content;
  cursor.begin = cursor.end = std::min(offset, text.size());
  cursor.tag = {Markup::Kind::Text, cursor.begin, cursor.end};
  Markups pieces(text);
  while (const std::optional<Markup> piece = pieces.next())
  {
    const bool isText = piece->kind == Markup::Kind::Text;
    if (offset <= piece->begin && !isText)
    {
      break; // between two tags
    }
    if (offset < piece->end || (offset == piece->end && (isText || !piece->isFinished)))
    {
      cursor.tag = *piece;
      cursor.begin = piece->begin;
      cursor.end = piece->end;
      if (!isText)
      {
        cursor.where = Cursor::Where::Nowhere;
      }
      if (isTag(*piece))
      {
        cursor.format = elements.formatOf(*piece);
        findInTag(cursor, text, offset);
      }
      break;
    }
    elements.pass(*piece);
  }
  cursor.around = elements.path();
  if (elements.areTooDeep())
  {
    cursor.where = Cursor::Where::Nowhere;
  }
  return cursor;
}

std::pair<std::size_t, std::size_t> trimmed(std::string_view text, std::size_t begin,
                                            std::size_t end)
{
  const std::string_view part = text.substr(begin, end - begin);
  const std::size_t first = part.find_first_not_of(blanks);
  return first == std::string_view::npos
             ? std::pair(end, end)
             : std::pair(begin + first, begin + part.find_last_not_of(blanks) + 1);
}

} // namespace tool::lsp
