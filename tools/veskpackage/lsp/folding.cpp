// SPDX-License-Identifier: Apache-2.0
#include "lsp/folding.hpp"

namespace tool::lsp
{

namespace source = vesk::source;

namespace
{
void addRanges(const Manuscript& manuscript, const source::Node& node, Json& ranges)
{
  const bool isComment = node.kind() == source::Kind::Comment;
  if (!node.isElement() && !isComment)
  {
    return;
  }
  const int first = manuscript.lines().placeOf(node.range().begin).line - 1;
  const int last = manuscript.lines().placeOf(node.range().end).line - 1;
  const int lastFolded = isComment || node.endTag().size() == 0 ? last : last - 1;
  if (lastFolded > first)
  {
    ranges.push_back({{"startLine", first}, {"endLine", lastFolded}});
    if (isComment)
    {
      ranges.back()["kind"] = "comment";
    }
  }
  for (const source::Node& child : node.children())
  {
    addRanges(manuscript, child, ranges);
  }
}
} // namespace

Json foldingOf(const Manuscript& manuscript)
{
  Json ranges = Json::array();
  for (const source::Node& node : manuscript.document().nodes())
  {
    addRanges(manuscript, node, ranges);
  }
  return ranges;
}

} // namespace tool::lsp
