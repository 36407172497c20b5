// SPDX-License-Identifier: Apache-2.0
#include "lsp/hover.hpp"

#include "lsp/cursor.hpp"
#include "lsp/languagename.hpp"
#include "lsp/wording.hpp"
#include "output/checkedfile.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <tuple>

namespace tool::lsp
{

namespace format = vesk::format;
namespace source = vesk::source;

using vesk::check::Finding;

namespace
{
source::Range rangeFrom(std::size_t begin, std::size_t end)
{
  return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

/// Says what the format has for the name or the language at a place, and where that stands.
std::optional<source::Range> addWords(const std::string& text, const Cursor& cursor,
                                      std::size_t offset, Wording& wording)
{
  const format::Entry* named = nullptr;
  const format::Entry* held = nullptr;
  std::size_t begin = cursor.begin;
  std::size_t end = cursor.end;
  switch (cursor.where)
  {
  case Cursor::Where::ElementName:
    named = cursor.format;
    break;
  case Cursor::Where::EndTagName: {
    const bool isOfParent =
        !cursor.around.empty() && cursor.around.back().name == nameIn(text, cursor.tag);
    named = isOfParent ? cursor.parent() : nullptr;
    break;
  }
  case Cursor::Where::AttributeName:
    named = cursor.attributeFormat(text);
    break;
  case Cursor::Where::Value:
    held = cursor.attributeFormat(text);
    break;
  case Cursor::Where::Content:
    held = cursor.parent();
    std::tie(begin, end) = trimmed(text, begin, end);
    break;
  case Cursor::Where::Nowhere:
    break;
  }
  if (named != nullptr)
  {
    wording.add(*named);
    return rangeFrom(begin, end);
  }
  if (held != nullptr && held->type == format::Type::Language && begin <= offset && offset <= end)
  {
    const std::string name = languageNameOf(std::string_view(text).substr(begin, end - begin));
    if (!name.empty())
    {
      wording.add(name);
      return rangeFrom(begin, end);
    }
  }
  return std::nullopt;
}

bool isAbout(const Finding& finding, std::size_t offset)
{
  const std::size_t begin = finding.begin.offset;
  const std::size_t end = std::max(finding.end.offset, begin + 1);
  return hasExactPlace(finding) && begin <= offset && offset < end;
}
} // namespace

Json hoverAt(const Manuscript& manuscript, std::size_t offset)
{
  Wording wording(manuscript.client().supports("/textDocument/hover/contentFormat", "markdown"));
  const Cursor cursor = cursorAt(manuscript.text(), offset);
  std::optional<source::Range> range = addWords(manuscript.text(), cursor, offset, wording);
  std::set<const vesk::check::Rule*> explained;
  for (const Finding& finding : manuscript.findings())
  {
    if (isAbout(finding, offset) && explained.insert(finding.rule).second)
    {
      wording.add(*finding.rule);
      range = range ? range : rangeFrom(finding.begin.offset, finding.end.offset);
    }
  }
  return wording.isEmpty()
             ? Json()
             : Json{{"contents", wording.toJson()}, {"range", manuscript.rangeOf(*range)}};
}

} // namespace tool::lsp
