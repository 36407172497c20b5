// SPDX-License-Identifier: Apache-2.0
#include "characters.hpp"
#include "layout.hpp"

#include <source/edits.hpp>

#include <algorithm>
#include <stdexcept>
#include <tuple>

namespace vesk::source
{
namespace
{
std::string withLineEnds(std::string_view text, LineEnd lineEnd)
{
  const std::string_view end = charactersOf(lineEnd);
  std::string result;
  for (const char c : text)
  {
    result += c == '\n' ? end : std::string_view(&c, 1);
  }
  return result;
}

std::string edited(std::string_view text, std::vector<Edit> edits, LineEnd lineEnd)
{
  std::stable_sort(edits.begin(), edits.end(),
                   [](const Edit& left, const Edit& right)
                   {
                     return std::tie(left.range.begin, left.range.end) <
                            std::tie(right.range.begin, right.range.end);
                   });
  std::string result;
  std::size_t done = 0;
  for (const Edit& edit : edits)
  {
    if (edit.range.begin < done || edit.range.end < edit.range.begin ||
        edit.range.end > text.size())
    {
      throw std::invalid_argument("edits that overlap, or reach beyond the text");
    }
    result += text.substr(done, edit.range.begin - done);
    result += withLineEnds(edit.text, lineEnd);
    done = edit.range.end;
  }
  result += text.substr(done);
  return result;
}

/// What a tag that is empty in itself has at its end, with the blanks before.
Range endOfEmptyTag(const Document& document, const Node& element)
{
  const std::string_view tag = document.text(element.startTag());
  const std::size_t last = tag.find_last_not_of(blanks, tag.size() - 3);
  return {element.startTag().begin + static_cast<std::uint32_t>(last) + 1, element.startTag().end};
}
} // namespace

std::string apply(const Document& document, std::vector<Edit> edits)
{
  const Encoding& encoding = document.encoding();
  std::string text = edited(document.text(), std::move(edits), document.lineEnd());
  if (encoding.isUtf8())
  {
    return text;
  }
  if (encode(document.text(), encoding) != document.bytes())
  {
    throw std::runtime_error("the bytes of this file cannot be told from its text in " +
                             encoding.name);
  }
  return encode(text, encoding);
}

LineEnd Editor::lineEnd() const
{
  return reading == LineReading::Raw ? document.lineEnd() : LineEnd::Lf;
}

void Editor::setAttribute(const Node& element, std::string_view name, std::string_view value,
                          const Attribute* after)
{
  const std::string_view text = document.text();
  if (const Attribute* attribute = element.attribute(name))
  {
    const char quote = text[attribute->valueRange().end];
    collected.push_back({attribute->valueRange(), escapedValue(value, quote)});
    return;
  }
  const Attribute* const before =
      after == nullptr && !element.attributes().empty() ? element.attributes().end() - 1 : after;
  std::uint32_t place =
      element.startTag().begin + 1 + static_cast<std::uint32_t>(element.name().size());
  std::string separator = " ";
  char quote = '"';
  if (before != nullptr)
  {
    place = before->range().end;
    quote = text[before->valueRange().end];
    const std::size_t begin = text.find_last_not_of(blanks, before->nameRange().begin - 1) + 1;
    separator = withLineFeeds(text.substr(begin, before->nameRange().begin - begin));
  }
  collected.push_back(
      {{place, place},
       separator + std::string(name) + '=' + quote + escapedValue(value, quote) + quote});
}

void Editor::removeAttribute(const Attribute& attribute)
{
  const std::size_t last =
      document.text().find_last_not_of(blanks, attribute.nameRange().begin - 1);
  collected.push_back({{static_cast<std::uint32_t>(last + 1), attribute.range().end}, {}});
}

void Editor::setText(const Node& element, std::string_view text)
{
  const std::string written = textAsXml(text, false, lineEnd());
  if (element.endTag().size() == 0)
  {
    if (!text.empty())
    {
      collected.push_back({endOfEmptyTag(document, element),
                           '>' + written + "</" + std::string(element.name()) + '>'});
    }
    return;
  }
  const auto isText = [](const Node& node)
  { return node.kind() == Kind::Text || node.kind() == Kind::CData; };
  const auto isLayout = [](const Node& node)
  {
    return node.kind() == Kind::Text && node.value().find_first_not_of(blanks) == std::string::npos;
  };
  bool hasText = false;
  for (const Node& child : element.children())
  {
    hasText = hasText || (isText(child) && !isLayout(child));
  }
  bool isWritten = false;
  const Node* sideBySide = nullptr; // the first of texts without anything between them
  for (const Node* child = element.firstChild(); child != nullptr; child = child->next())
  {
    if (!isText(*child))
    {
      sideBySide = nullptr;
      continue;
    }
    sideBySide = sideBySide == nullptr ? child : sideBySide;
    if (hasText && isLayout(*child))
    {
      continue;
    }
    Edit edit{child->range(), {}};
    if (!isWritten)
    {
      edit.text = textAsXml(text, child->kind() == Kind::CData, lineEnd());
      isWritten = true;
      if (edit.text.rfind(beginOfCData, 0) != 0) // blanks beside it would become part of it
      {
        edit.range.begin = sideBySide->range().begin;
        while (child->next() != nullptr && isText(*child->next()))
        {
          child = child->next();
        }
        edit.range.end = child->range().end;
      }
    }
    collected.push_back(edit);
  }
  if (!isWritten && !text.empty())
  {
    collected.push_back({{element.startTag().end, element.startTag().end}, written});
  }
}

void Editor::insert(const Node& parent, const Node* after, const std::vector<NewElement>& elements)
{
  if (step.empty())
  {
    step = stepOfIndentation(document);
  }
  // As the neighbour stands; the first child as its parent stands.
  std::optional<std::string> indentation;
  const Node* neighbour = after;
  for (const Node* child = parent.firstChild(); neighbour == nullptr && child != nullptr;
       child = child->next())
  {
    neighbour = child->isElement() ? child : nullptr;
  }
  if (neighbour != nullptr)
  {
    indentation = indentationOf(document, *neighbour);
  }
  else if (const auto outer = indentationOf(document, parent))
  {
    indentation = *outer + step;
  }
  else if (parent.parent() == nullptr && document.text().find_first_of("\r\n") != std::string::npos)
  {
    indentation = step;
  }
  std::string xml;
  for (const NewElement& element : elements)
  {
    xml += (indentation ? '\n' + *indentation : "") +
           (element.moved != nullptr ? withLineFeeds(document.text(element.moved->range()))
                                     : asXml(element, indentation, step, lineEnd()));
  }
  if (parent.endTag().size() == 0)
  {
    const std::string end = indentation ? '\n' + indentationOf(document, parent).value_or("") : "";
    collected.push_back({endOfEmptyTag(document, parent),
                         '>' + xml + end + "</" + std::string(parent.name()) + '>'});
    return;
  }
  const std::uint32_t begin = after == nullptr ? parent.startTag().end : after->range().end;
  const Node* const next = after == nullptr ? parent.firstChild() : after->next();
  const std::uint32_t place = indentation ? endWithComments(begin, next, document.text()) : begin;
  const std::uint32_t end = parent.endTag().begin;
  const bool isFirstOfAll = indentation && neighbour == nullptr &&
                            areBlanksInLine(document.text().substr(place, end - place));
  collected.push_back(
      isFirstOfAll ? Edit{{place, end}, xml + '\n' + indentationOf(document, parent).value_or("")}
                   : Edit{{place, place}, xml});
}

void Editor::remove(const Node& first, const Node& last)
{
  const Range nodes{first.range().begin, last.range().end};
  const Range lines = rangeToRemove(document, nodes);
  collected.push_back({lines == nodes ? withBlanks(document, nodes) : lines, {}});
}

void Editor::unwrap(const Node& element)
{
  collected.push_back({rangeToRemove(document, element.startTag()), {}});
  collected.push_back({rangeToRemove(document, element.endTag()), {}});
}

} // namespace vesk::source
