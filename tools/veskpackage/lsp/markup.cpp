// SPDX-License-Identifier: Apache-2.0
#include "lsp/markup.hpp"

#include <source/limits.hpp>

#include <algorithm>
#include <array>

namespace tool::lsp
{
namespace
{
constexpr std::string_view blanksInTags = " \t\r\n";
constexpr std::string_view endsOfNames = " \t\r\n/<>=\"'";

bool startsAt(std::string_view text, std::size_t place, std::string_view beginning)
{
  return text.substr(place, beginning.size()) == beginning;
}

std::size_t findFrom(std::string_view text, std::string_view characters, std::size_t from)
{
  return std::min(text.find_first_of(characters, from), text.size());
}

/// Behind the value that begins at \p begin, up to its quote. A value without one ends with the tag,
/// which is taken to end at the first ">".
std::size_t endOfValue(std::string_view text, std::size_t begin, char quote)
{
  const std::array<char, 2> ends{quote, '<'};
  const std::size_t end = findFrom(text, {ends.data(), ends.size()}, begin);
  return end < text.size() && text[end] == quote ? end : findFrom(text.substr(0, end), ">", begin);
}
} // namespace

std::optional<Markup> Markups::next()
{
  if (place >= text.size())
  {
    return std::nullopt;
  }
  Markup found{Markup::Kind::Text, place, findFrom(text, "<", place)};
  if (found.end == place)
  {
    found = startsAt(text, place, "<!--")        ? other("-->", place + 4)
            : startsAt(text, place, "<![CDATA[") ? other("]]>", place + 9)
            : startsAt(text, place, "<?")        ? other("?>", place + 2)
            : startsAt(text, place, "<!")        ? documentType()
                                                 : tag();
  }
  place = found.end;
  return found;
}

Markup Markups::other(std::string_view closing, std::size_t from) const
{
  const std::size_t end = text.find(closing, from);
  return end == std::string_view::npos ? Markup{Markup::Kind::Other, place, text.size(), false}
                                       : Markup{Markup::Kind::Other, place, end + closing.size()};
}

Markup Markups::documentType() const
{
  std::size_t end = findFrom(text, "[>", place);
  if (end < text.size() && text[end] == '[')
  {
    end = findFrom(text, ">", findFrom(text, "]", end));
  }
  return {Markup::Kind::Other, place, std::min(end + 1, text.size()), end < text.size()};
}

Markup Markups::tag() const
{
  const bool isEnd = startsAt(text, place, "</");
  std::size_t end = findFrom(text, "<>\"'", place + 1);
  while (end < text.size() && (text[end] == '"' || text[end] == '\''))
  {
    const char quote = text[end];
    end = endOfValue(text, end + 1, quote);
    end = findFrom(text, "<>\"'", end < text.size() && text[end] == quote ? end + 1 : end);
  }
  const bool isFinished = end < text.size() && text[end] == '>';
  const bool isEmpty = isFinished && end > place + 1 && text[end - 1] == '/';
  return {isEnd     ? Markup::Kind::EndTag
          : isEmpty ? Markup::Kind::EmptyTag
                    : Markup::Kind::StartTag,
          place, isFinished ? end + 1 : end, isFinished};
}

std::size_t nameBegin(const Markup& tag)
{
  return std::min(tag.begin + (tag.kind == Markup::Kind::EndTag ? 2 : 1), tag.end);
}

std::size_t nameEnd(std::string_view text, const Markup& tag)
{
  return std::min(findFrom(text, endsOfNames, nameBegin(tag)), tag.end);
}

std::string_view nameIn(std::string_view text, const Markup& tag)
{
  return text.substr(nameBegin(tag), nameEnd(text, tag) - nameBegin(tag));
}

std::vector<WrittenAttribute> attributesIn(std::string_view text, const Markup& tag)
{
  const std::string_view inner = text.substr(0, tag.isFinished ? tag.end - 1 : tag.end);
  const auto behindBlanks = [inner](std::size_t from)
  { return std::min(inner.find_first_not_of(blanksInTags, from), inner.size()); };
  std::vector<WrittenAttribute> attributes;
  std::size_t at = nameEnd(text, tag);
  while (attributes.size() < static_cast<std::size_t>(vesk::limits::attributes.most))
  {
    at = std::min(inner.find_first_not_of(" \t\r\n/\"'=", at), inner.size());
    if (at == inner.size())
    {
      break;
    }
    WrittenAttribute attribute;
    attribute.begin = at;
    attribute.nameEnd = findFrom(inner, endsOfNames, at);
    if (attribute.nameEnd == at) // a ">" behind an odd quote
    {
      ++at;
      continue;
    }
    at = behindBlanks(attribute.nameEnd);
    attribute.hasValue = at < inner.size() && inner[at] == '=';
    if (attribute.hasValue)
    {
      const std::size_t behind = at + 1;
      at = behindBlanks(behind);
      attribute.isQuoted = at < inner.size() && (inner[at] == '"' || inner[at] == '\'');
      attribute.valueBegin = attribute.isQuoted ? at + 1 : behind;
      attribute.valueEnd = attribute.isQuoted
                               ? std::min(endOfValue(inner, at + 1, inner[at]), inner.size())
                               : findFrom(inner, endsOfNames, behind);
      attribute.isClosed = attribute.isQuoted && attribute.valueEnd < inner.size() &&
                           inner[attribute.valueEnd] == inner[at];
      at = attribute.valueEnd + (attribute.isClosed ? 1 : 0);
    }
    attributes.push_back(attribute);
  }
  return attributes;
}

} // namespace tool::lsp
