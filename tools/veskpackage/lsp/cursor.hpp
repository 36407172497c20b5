// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_CURSOR_HPP
#define TOOLS_VESKPACKAGE_LSP_CURSOR_HPP

#include "lsp/markup.hpp"

#include <format/format.hpp>

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

/// What a place in a text that somebody is writing is, by the description of the format.
namespace tool::lsp
{

/// What the format has for a child of an element: an entry of a list may have any name. Null when there
/// is no such, or \p parent is null.
const vesk::format::Element* childOf(const vesk::format::Element* parent, std::string_view name);

/// The elements that are open somewhere in a text.
class OpenElements
{
public:
  struct Open
  {
    std::string_view name;
    const vesk::format::Element* format; ///< null where the format has none
    std::size_t contentBegin;            ///< behind its start tag
  };

  explicit OpenElements(std::string_view manifest) : text(manifest) {}

  /// Goes past a piece of the text. An end tag closes the innermost element of its name, with those
  /// within; one that closes none, and a start tag without its ">", are passed over. False for an end
  /// tag that closes none.
  bool pass(const Markup& piece);

  /// What the format has for the element of a tag here.
  const vesk::format::Element* formatOf(const Markup& tag) const;

  const std::vector<Open>& path() const { return open; } ///< from the root on
  bool areTooDeep() const { return isTooDeep; } ///< deeper than a manifest may be: no longer right

private:
  std::string_view text;
  std::vector<Open> open;
  bool isTooDeep = false;
};

/// Where a place in a text is.
struct Cursor
{
  enum class Where
  {
    Nowhere, ///< in a comment or the like, or between an attribute and its value
    Content, ///< between tags
    ElementName,
    EndTagName,
    AttributeName, ///< also where one can begin
    Value          ///< of an attribute
  };
  Where where = Where::Nowhere;
  /// The elements around: without the one in whose tag the place is.
  std::vector<OpenElements::Open> around;
  /// What the place is in: of Content all up to the tags around it, else the name or value.
  std::size_t begin = 0;
  std::size_t end = 0;
  Markup tag; ///< that the place is in; of Content the piece of text
  const vesk::format::Element* format = nullptr; ///< of the tag
  std::vector<WrittenAttribute> attributes;      ///< of the tag
  std::optional<std::size_t> attribute;          ///< of them the one that the place is in

  /// The format of the innermost element around; null where the format has none.
  const vesk::format::Element* parent() const
  {
    return around.empty() ? nullptr : around.back().format;
  }
  /// The format of the attribute that the place is in; null where the format has none.
  const vesk::format::Attribute* attributeFormat(std::string_view text) const;
};

/// Where the byte at \p offset is. Takes time in proportion to the text.
Cursor cursorAt(std::string_view text, std::size_t offset);

/// A part of a text without the blanks around it; where there is nothing else, nothing at its end.
std::pair<std::size_t, std::size_t> trimmed(std::string_view text, std::size_t begin,
                                            std::size_t end);

/// Calls \p visit with each child of an element whose content begins at \p contentBegin: with what the
/// format has for it, which can be null, and its tag.
template <typename Visit>
void visitChildren(std::string_view text, const vesk::format::Element* parent,
                   std::size_t contentBegin, const Visit& visit)
{
  Markups pieces(text, contentBegin);
  OpenElements within(text);
  while (const std::optional<Markup> piece = pieces.next())
  {
    const bool isElement =
        piece->kind == Markup::Kind::StartTag || piece->kind == Markup::Kind::EmptyTag;
    if (isElement && within.path().empty())
    {
      visit(childOf(parent, nameIn(text, *piece)), *piece);
    }
    if (!within.pass(*piece))
    {
      return;
    }
  }
}

} // namespace tool::lsp

#endif
