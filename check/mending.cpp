// SPDX-License-Identifier: Apache-2.0
#include <check/mending.hpp>
#include <package/xml/text.hpp>

#include <algorithm>

namespace vesk::check
{
namespace
{
using source::Edit;
using source::Editor;
using source::Kind;
using source::Range;

std::string inQuotes(const QString& text) { return '"' + fromQString(text) + '"'; }

Range nameRange(std::uint32_t begin, const source::Node& element)
{
  return {begin, begin + static_cast<std::uint32_t>(element.name().size())};
}

/// Whether all that stands directly in an element is as \p isMeant says.
template <typename IsMeant>
bool holdsOnly(const source::Node& element, const IsMeant& isMeant)
{
  bool areAll = true;
  for (const source::Node& child : element.children())
  {
    areAll = areAll && isMeant(child);
  }
  return areAll;
}

bool holdsTextOnly(const source::Node& element)
{
  return holdsOnly(element, [](const source::Node& child) { return child.kind() == Kind::Text; });
}

bool isLayout(const source::Node& node)
{
  return node.kind() == Kind::Text &&
         node.value().find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// A part of a document as edits have it, with "\n" for the document's line end; none where it has
/// others as well, which would not be the same again.
std::optional<std::string> asEdited(const source::Document& document, const Range& range)
{
  const std::string_view end = source::charactersOf(document.lineEnd());
  std::string lines;
  std::string_view rest = document.text(range);
  while (true)
  {
    const std::string_view line = rest.substr(0, rest.find(end));
    if (line.find_first_of("\r\n") != std::string_view::npos)
    {
      return std::nullopt;
    }
    lines += line;
    if (line.size() == rest.size())
    {
      return lines;
    }
    lines += '\n';
    rest.remove_prefix(line.size() + end.size());
  }
}

/// As many as are taken for layout: looking through more of them for each of many sections would take
/// long.
constexpr std::uint32_t mostBlanks = 100;

/// From behind the start tag up to the end tag, without the blanks in front of that.
Range contentOf(const source::Node& element, const source::Document& document)
{
  const std::uint32_t begin = element.startTag().end;
  std::uint32_t end = element.endTag().begin;
  const std::uint32_t least = std::max(begin, end - std::min(end, mostBlanks));
  while (end > least &&
         std::string_view(" \t\r\n").find(document.text()[end - 1]) != std::string_view::npos)
  {
    --end;
  }
  return {begin, end};
}

/// The line break and the blanks in front of an element that stands first in its line; else nothing.
std::string lineBefore(const source::Node& element, const source::Document& document)
{
  const std::uint32_t end = element.range().begin;
  const std::uint32_t least = end - std::min(end, mostBlanks);
  const std::string_view before = document.text({least, end});
  const std::size_t blanks = before.find_last_not_of(" \t");
  const bool isFirst =
      blanks != std::string_view::npos && (before[blanks] == '\n' || before[blanks] == '\r');
  return isFirst ? '\n' + std::string(before.substr(blanks + 1)) : std::string();
}
} // namespace

std::optional<Mend> Mending::rename(const Node& element, const QString& name) const
{
  const source::Node* const node = element.inText();
  if (document == nullptr || node == nullptr)
  {
    return std::nullopt;
  }
  const std::string newName = fromQString(name);
  std::vector<Edit> edits{{nameRange(node->startTag().begin + 1, *node), newName}};
  if (node->endTag().size() != 0)
  {
    edits.push_back({nameRange(node->endTag().begin + 2, *node), newName});
  }
  return Mend{"write " + inQuotes(name), std::move(edits)};
}

std::optional<Mend> Mending::renameAttribute(const Node& element, const QString& from,
                                             const QString& to) const
{
  const source::Node* const node = element.inText();
  const source::Attribute* const attribute =
      node != nullptr ? node->attribute(fromQString(from)) : nullptr;
  if (document == nullptr || attribute == nullptr)
  {
    return std::nullopt;
  }
  return Mend{"write " + inQuotes(to), {{attribute->nameRange(), fromQString(to)}}};
}

std::optional<Mend> Mending::setValue(const Node& element, const QString& attribute,
                                      const QString& value) const
{
  const source::Node* const node = element.inText();
  const std::string name = fromQString(attribute);
  if (document == nullptr || node == nullptr || node->attribute(name) == nullptr)
  {
    return std::nullopt;
  }
  Editor editor(*document);
  editor.setAttribute(*node, name, fromQString(value));
  return Mend{"write " + inQuotes(value), editor.edits()};
}

std::optional<Mend> Mending::setText(const Node& element, const QString& text) const
{
  const source::Node* const node = element.inText();
  if (document == nullptr || node == nullptr || !holdsTextOnly(*node))
  {
    return std::nullopt;
  }
  Editor editor(*document);
  editor.setText(*node, fromQString(text));
  return Mend{text.isEmpty() ? "remove the text" : "write " + inQuotes(text), editor.edits()};
}

std::optional<Mend> Mending::remove(const Node& element) const
{
  const source::Node* const node = element.inText();
  if (document == nullptr || node == nullptr || !holdsTextOnly(*node))
  {
    return std::nullopt;
  }
  Editor editor(*document);
  editor.remove(*node);
  return Mend{"remove it", editor.edits()};
}

bool Mending::holdsElementsOnly(const Node& element, bool canHaveComments) const
{
  const source::Node* const node = element.inText();
  return document != nullptr && node != nullptr &&
         holdsOnly(*node,
                   [canHaveComments](const source::Node& child)
                   {
                     return child.isElement() || isLayout(child) ||
                            (canHaveComments && child.kind() == Kind::Comment);
                   });
}

std::optional<Mend> Mending::merge(const Node& earlier, const Node& section) const
{
  const source::Node* const into = earlier.inText();
  const source::Node* const from = section.inText();
  const bool canMerge = document != nullptr && into != nullptr && from != nullptr &&
                        into->endTag().size() != 0 && from->attributes().empty();
  if (!canMerge)
  {
    return std::nullopt;
  }
  const std::optional<std::string> content = asEdited(*document, contentOf(*from, *document));
  if (!content)
  {
    return std::nullopt;
  }
  Editor editor(*document);
  editor.remove(*from);
  std::vector<Edit> edits = editor.edits();
  if (from->firstChild() != nullptr)
  {
    const std::uint32_t place = contentOf(*into, *document).end;
    const bool standsInLine = content->front() == '<' && into->firstChild() != nullptr;
    edits.push_back({{place, place},
                     (standsInLine ? lineBefore(*into->firstChild(), *document) : "") + *content});
  }
  return Mend{"merge it into the one before", std::move(edits)};
}

} // namespace vesk::check
