// SPDX-License-Identifier: Apache-2.0
#include "characters.hpp"
#include "layout.hpp"

#include <source/formatting.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vesk::source
{
namespace
{
/// Walks through a document and collects what is not as it shall be.
class Formatter
{
public:
  Formatter(const Document& formatted, std::string stepOfFormat)
      : document(formatted), step(std::move(stepOfFormat))
  {}

  std::vector<Edit> edits()
  {
    const auto size = static_cast<std::uint32_t>(document.text().size());
    const bool hasMark = document.text().substr(0, byteOrderMark.size()) == byteOrderMark;
    Range gap{hasMark ? static_cast<std::uint32_t>(byteOrderMark.size()) : 0, 0};
    for (const Node& node : document.nodes())
    {
      gap.end = node.range().begin;
      put(gap, &node == &*document.nodes().begin() ? "" : newLine(gap, ""));
      formatNode(node, "");
      gap.begin = node.range().end;
    }
    put({gap.begin, size}, "\n");
    return std::move(collected);
  }

private:
  void formatNode(const Node& node, const std::string& indentation)
  {
    if (!node.isElement())
    {
      return;
    }
    formatTags(node, indentation);
    if (!staysInside(document, node))
    {
      formatChildren(node, indentation);
    }
  }

  void formatTags(const Node& element, const std::string& indentation)
  {
    const bool isEmptyTag = element.endTag().size() == 0;
    std::uint32_t end = element.startTag().begin + 1 + nameSize(element);
    for (const Attribute& attribute : element.attributes())
    {
      const std::string_view value = document.text(attribute.valueRange());
      const std::string quote(1, value.find('"') == std::string_view::npos ? '"' : '\'');
      const Range gap{end, attribute.nameRange().begin};
      put(gap, lineEndsIn(gap) == 0 ? " " : '\n' + indentation + step + step);
      put({attribute.nameRange().end, attribute.valueRange().begin}, '=' + quote);
      put({attribute.valueRange().end, attribute.range().end}, quote);
      end = attribute.range().end;
    }
    put({end, element.startTag().end - (isEmptyTag ? 2 : 1)}, "");
    if (!isEmptyTag)
    {
      put({element.endTag().begin + 2 + nameSize(element), element.endTag().end - 1}, "");
    }
  }

  /// Those of an element whose texts are blanks all.
  void formatChildren(const Node& element, const std::string& indentation)
  {
    const std::string inner = indentation + step;
    Range gap{element.startTag().end, 0};
    for (const Node& child : element.children())
    {
      if (child.kind() == Kind::Text)
      {
        continue;
      }
      gap.end = child.range().begin;
      const bool staysInLine = child.kind() == Kind::Comment && lineEndsIn(gap) == 0;
      const bool isFirst = gap.begin == element.startTag().end;
      put(gap, staysInLine ? " " : isFirst ? '\n' + inner : newLine(gap, inner));
      formatNode(child, inner);
      gap.begin = child.range().end;
    }
    const bool isEmpty = gap.begin == element.startTag().end;
    put({gap.begin, element.endTag().begin}, isEmpty ? "" : '\n' + indentation);
  }

  /// The begin of a line, behind an empty one where the gap has some.
  std::string newLine(const Range& gap, const std::string& indentation) const
  {
    return (lineEndsIn(gap) > 1 ? "\n\n" : "\n") + indentation;
  }

  std::size_t lineEndsIn(const Range& gap) const
  {
    const std::string standing = withLineFeeds(document.text(gap));
    return static_cast<std::size_t>(std::count(standing.begin(), standing.end(), '\n'));
  }

  static std::uint32_t nameSize(const Node& element)
  {
    return static_cast<std::uint32_t>(element.name().size());
  }

  /// Line ends stay as they are where nothing else changes.
  void put(const Range& range, std::string wanted)
  {
    if (withLineFeeds(document.text(range)) != wanted)
    {
      collected.push_back({range, std::move(wanted)});
    }
  }

  const Document& document;
  const std::string step;
  std::vector<Edit> collected;
};
} // namespace

std::vector<Edit> formatting(const Document& document, const std::optional<std::string>& step)
{
  if (document.error())
  {
    throw std::invalid_argument("the layout of a text that is not well-formed");
  }
  if (step && !areBlanksInLine(*step))
  {
    throw std::invalid_argument("an indentation that is not of blanks and tabs");
  }
  return Formatter(document, step ? *step : stepOfIndentation(document)).edits();
}

} // namespace vesk::source
