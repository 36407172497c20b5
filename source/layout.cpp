// SPDX-License-Identifier: Apache-2.0
#include "layout.hpp"

#include "characters.hpp"

#include <algorithm>
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

bool isLineEnd(char c) { return lineEnds.find(c) != std::string_view::npos; }

/// How often nodes are indented by how much.
class Steps
{
public:
  /// Of the nodes in an element that stands behind such blanks, or behind something else.
  void collect(const Document& document, const Node& element,
               const std::optional<std::string>& outer)
  {
    if (staysInside(document, element))
    {
      return;
    }
    for (const Node& child : element.children())
    {
      const auto inner = child.kind() == Kind::Text ? std::nullopt : indentationOf(document, child);
      if (outer && inner && inner->size() > outer->size() &&
          inner->size() - outer->size() <= widest && inner->compare(0, outer->size(), *outer) == 0)
      {
        count(inner->substr(outer->size()));
      }
      if (child.isElement())
      {
        collect(document, child, inner);
      }
    }
  }

  /// The first of several; two blanks if there is none.
  std::string mostFrequent() const
  {
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& left, const auto& right)
                                       { return left.second < right.second; });
    return most == counts.end() ? "  " : most->first;
  }

private:
  static constexpr std::size_t widest = 8; // one line must not make all others grow beyond measure

  void count(const std::string& step)
  {
    auto known = std::find_if(counts.begin(), counts.end(),
                              [&step](const auto& counted) { return counted.first == step; });
    known = known == counts.end() ? counts.insert(known, {step, 0}) : known;
    ++known->second;
  }

  std::vector<std::pair<std::string, std::size_t>> counts; // in the order of the text
};

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

bool areBlanksInLine(std::string_view text)
{
  return text.find_first_not_of(blanksInLine) == std::string_view::npos;
}

std::string withLineFeeds(std::string_view text)
{
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i)
  {
    const bool isOfCrLf = text[i] == '\n' && i > 0 && text[i - 1] == '\r';
    result += isOfCrLf ? "" : std::string(1, text[i] == '\r' ? '\n' : text[i]);
  }
  return result;
}

std::optional<std::string> indentationOf(const Document& document, const Node& node)
{
  return indentationAt(document, node.range().begin);
}

std::optional<std::string> indentationAt(const Document& document, std::uint32_t begin)
{
  const std::string_view before = document.text().substr(0, begin);
  const std::size_t last = before.find_last_not_of(blanksInLine);
  return last != std::string_view::npos && isLineEnd(before[last])
             ? std::optional(std::string(before.substr(last + 1)))
             : std::nullopt;
}

bool staysInside(const Document& document, const Node& element)
{
  const Attribute* const space = element.attribute("xml:space");
  bool hasTags = false;
  for (const Node& child : element.children())
  {
    const bool isText =
        child.kind() == Kind::Text
            ? document.text(child.range()).find_first_not_of(blanks) != std::string_view::npos
            : child.kind() == Kind::CData || child.kind() == Kind::Reference;
    if (isText)
    {
      return true;
    }
    hasTags = hasTags || child.isElement() || child.kind() == Kind::Instruction;
  }
  const Range inside{element.startTag().end, element.endTag().begin};
  return (space != nullptr && space->value() == "preserve") ||
         (!hasTags && document.text(inside).find_first_of(lineEnds) == std::string_view::npos);
}

std::string stepOfIndentation(const Document& document)
{
  Steps steps;
  if (const Node* const root = document.root())
  {
    steps.collect(document, *root, indentationOf(document, *root).value_or(""));
  }
  return steps.mostFrequent();
}

namespace
{
bool isEmptyLineAt(std::string_view text, std::size_t begin)
{
  const std::size_t end = text.find_first_not_of(blanksInLine, begin);
  return end != std::string_view::npos && isLineEnd(text[end]);
}

/// Whether the line before the one that begins at a place is empty.
bool followsEmptyLine(std::string_view text, std::size_t begin)
{
  std::size_t end = begin - 1;
  end -= end > 0 && text.substr(end - 1, 2) == "\r\n" ? 1 : 0;
  return isEmptyLineAt(text, lineBegin(text, end));
}

std::size_t behindLineEnd(std::string_view text, std::size_t lineEnd)
{
  return lineEnd + (text.substr(lineEnd, 2) == "\r\n" ? 2 : 1);
}
} // namespace

Range rangeToRemove(const Document& document, const Range& range)
{
  const std::string_view text = document.text();
  const std::size_t lineEnd = text.find_first_not_of(blanksInLine, range.end);
  if (!indentationAt(document, range.begin) || lineEnd == std::string_view::npos ||
      !isLineEnd(text[lineEnd]))
  {
    return range;
  }
  const std::size_t begin = lineBegin(text, range.begin);
  std::size_t end = behindLineEnd(text, lineEnd);
  if (followsEmptyLine(text, begin) && isEmptyLineAt(text, end))
  {
    end = behindLineEnd(text, text.find_first_not_of(blanksInLine, end));
  }
  return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

Range withBlanks(const Document& document, const Range& range)
{
  const std::string_view text = document.text();
  const std::size_t behind = text.find_first_not_of(blanksInLine, range.end);
  const std::size_t before = text.substr(0, range.begin).find_last_not_of(blanksInLine);
  const bool hasBlankBefore = before + 1 < range.begin;
  if (behind == std::string_view::npos || before == std::string_view::npos || !hasBlankBefore)
  {
    return range;
  }
  if (isLineEnd(text[behind]) && text[before] == '>')
  {
    return {static_cast<std::uint32_t>(before) + 1, static_cast<std::uint32_t>(behind)};
  }
  return text[behind] == '<' ? Range{range.begin, static_cast<std::uint32_t>(behind)} : range;
}

std::uint32_t endWithComments(std::uint32_t place, const Node* next, std::string_view text)
{
  std::uint32_t end = place;
  for (; next != nullptr; next = next->next())
  {
    if (next->kind() == Kind::Comment)
    {
      end = next->range().end;
    }
    else if (next->kind() != Kind::Text ||
             !areBlanksInLine(text.substr(next->range().begin, next->range().size())))
    {
      break;
    }
  }
  return end;
}

std::string asXml(const NewElement& element, const std::optional<std::string>& indentation,
                  const std::string& step, LineEnd lineEnd)
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
  xml += '>' + textAsXml(element.text, element.isCData, lineEnd);
  for (const NewElement& child : element.children)
  {
    const auto inner = indentation ? std::optional(*indentation + step) : std::nullopt;
    xml += (inner ? '\n' + *inner : "") + asXml(child, inner, step, lineEnd);
  }
  xml += indentation && !element.children.empty() ? '\n' + *indentation : "";
  return xml + "</" + element.name + '>';
}

std::string textAsXml(std::string_view text, bool isCData, LineEnd lineEnd)
{
  const bool areOnlyBlanks =
      !text.empty() && text.find_first_not_of(blanks) == std::string_view::npos;
  const std::string_view end = charactersOf(lineEnd);
  bool fitsInCData = (isCData || areOnlyBlanks) && !text.empty() &&
                     text.find(endOfCData) == std::string_view::npos;
  std::string asText;
  std::string asCData;
  while (true)
  {
    const std::string_view line = text.substr(0, text.find(end));
    asText += escaped(
        line, {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'\r', "&#xD;"}, {'\n', "&#xA;"}});
    asCData += line;
    fitsInCData = fitsInCData && line.find_first_of(lineEnds) == std::string_view::npos;
    if (line.size() == text.size())
    {
      break;
    }
    asText += '\n';
    asCData += '\n';
    text.remove_prefix(line.size() + end.size());
  }
  return fitsInCData ? std::string(beginOfCData) + asCData + std::string(endOfCData) : asText;
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
