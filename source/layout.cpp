// SPDX-License-Identifier: Apache-2.0
#include "layout.hpp"

#include "characters.hpp"

#include <stdexcept>

namespace vesk::source
{
namespace
{
constexpr std::string_view blanksInLine = " \t";

std::size_t lineBegin(std::string_view text, std::size_t offset)
{
  const std::size_t end =
      offset == 0 ? std::string_view::npos : text.find_last_of(lineEnds, offset - 1);
  return end == std::string_view::npos ? 0 : end + 1;
}

bool areBlanks(std::string_view text)
{
  return text.find_first_not_of(blanksInLine) == std::string_view::npos;
}

/// Escapes the characters that are given with what stands for them.
std::string escaped(std::string_view text,
                    std::initializer_list<std::pair<char, std::string_view>> escapes)
{
  requireXmlCharacters(text);
  std::string result;
  for (const char c : text)
  {
    std::string_view written(&c, 1);
    for (const auto& [character, reference] : escapes)
    {
      written = c == character ? reference : written;
    }
    result += written;
  }
  return result;
}
} // namespace

std::optional<std::string> indentationOf(const Document& document, const Node& node)
{
  return indentationAt(document, node.range().begin);
}

std::optional<std::string> indentationAt(const Document& document, std::uint32_t begin)
{
  const std::string_view text = document.text();
  const std::size_t line = lineBegin(text, begin);
  const std::string_view before = text.substr(line, begin - line);
  return line != 0 && areBlanks(before) ? std::optional(std::string(before)) : std::nullopt;
}

std::string stepOfIndentation(const Document& document)
{
  const Node* const root = document.root();
  for (const Node* node = root != nullptr ? root->firstChild() : nullptr; node != nullptr;
       node = node->next())
  {
    const auto indentation = indentationOf(document, *node);
    if (node->isElement() && indentation && !indentation->empty())
    {
      return *indentation;
    }
  }
  return "  ";
}

Range rangeToRemove(const Document& document, const Range& range)
{
  const std::string_view text = document.text();
  const std::size_t lineEnd = text.find_first_of(lineEnds, range.end);
  if (!indentationAt(document, range.begin) || lineEnd == std::string_view::npos ||
      !areBlanks(text.substr(range.end, lineEnd - range.end)))
  {
    return range;
  }
  const std::size_t end = lineEnd + (text.substr(lineEnd, 2) == "\r\n" ? 2 : 1);
  return {static_cast<std::uint32_t>(lineBegin(text, range.begin)),
          static_cast<std::uint32_t>(end)};
}

std::uint32_t endWithComments(const Node& node, std::string_view text)
{
  std::uint32_t end = node.range().end;
  for (const Node* next = node.next(); next != nullptr; next = next->next())
  {
    if (next->kind() == Kind::Comment)
    {
      end = next->range().end;
    }
    else if (next->kind() != Kind::Text ||
             !areBlanks(text.substr(next->range().begin, next->range().size())))
    {
      break;
    }
  }
  return end;
}

std::string asXml(const NewElement& element, const std::optional<std::string>& indentation,
                  const std::string& step)
{
  std::string xml = '<' + element.name;
  for (const auto& [name, value] : element.attributes)
  {
    xml += ' ' + name + "=\"" + escapedValue(value, '"') + '"';
  }
  if (element.text.empty() && element.children.empty())
  {
    return xml + "/>";
  }
  xml += '>' + textAsXml(element.text, element.isCData);
  for (const NewElement& child : element.children)
  {
    const auto inner = indentation ? std::optional(*indentation + step) : std::nullopt;
    xml += (inner ? '\n' + *inner : "") + asXml(child, inner, step);
  }
  xml += indentation && !element.children.empty() ? '\n' + *indentation : "";
  return xml + "</" + element.name + '>';
}

std::string textAsXml(std::string_view text, bool isCData)
{
  const bool areOnlyBlanks =
      !text.empty() && text.find_first_not_of(blanks) == std::string_view::npos;
  std::string plain = escapedText(text);
  if (text.empty() || (!isCData && !areOnlyBlanks) ||
      text.find(endOfCData) != std::string_view::npos || text.find('\r') != std::string_view::npos)
  {
    return plain;
  }
  return std::string(beginOfCData).append(text).append(endOfCData);
}

std::string escapedText(std::string_view text)
{
  return escaped(text, {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'\r', "&#xD;"}});
}

std::string escapedValue(std::string_view value, char quote)
{
  return escaped(value, {{'&', "&amp;"},
                         {'<', "&lt;"},
                         {quote, quote == '"' ? "&quot;" : "&apos;"},
                         {'\t', "&#x9;"},
                         {'\n', "&#xA;"},
                         {'\r', "&#xD;"}});
}

} // namespace vesk::source
