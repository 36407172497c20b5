// SPDX-License-Identifier: Apache-2.0
#include "lsp/fixall.hpp"

#include <check/fixing.hpp>
#include <edit/commonsubsequence.hpp>
#include <source/lines.hpp>

#include <string>
#include <utility>

namespace tool::lsp
{

namespace check = vesk::check;
namespace source = vesk::source;

namespace
{
constexpr int mostRounds = 16; // faults hide others no deeper than the format nests

std::vector<source::Edit> mendsOf(const std::vector<check::Finding>& findings)
{
  std::vector<source::Edit> edits;
  for (const check::Finding* const finding : check::mendableAtOnce(findings))
  {
    edits.insert(edits.end(), finding->mend->edits.begin(), finding->mend->edits.end());
  }
  return edits;
}

std::vector<std::string> linesOf(const source::Lines& text)
{
  std::vector<std::string> lines;
  for (int number = 1; number <= text.count(); ++number)
  {
    lines.emplace_back(text.line(number));
  }
  return lines;
}

/// The edits that make one text of another, line by line. Lines that stay keep their ends.
std::vector<source::Edit> differences(const source::Lines& before, const source::Lines& after)
{
  const std::vector<std::string> left = linesOf(before);
  const std::vector<std::string> right = linesOf(after);
  const auto endOf = [&](std::size_t count) // of so many lines
  {
    return static_cast<std::uint32_t>(count == 0 ? before.beginOf(1)
                                                 : before.beginOf(static_cast<int>(count)) +
                                                       left[count - 1].size());
  };
  std::vector<source::Edit> edits;
  vesk::edit::IndexPairs equal = vesk::edit::commonSubsequence(left, right);
  equal.emplace_back(left.size(), right.size());
  std::size_t leftBegin = 0;
  std::size_t rightBegin = 0;
  for (const auto& [leftEnd, rightEnd] : equal)
  {
    if (leftBegin < leftEnd || rightBegin < rightEnd)
    {
      // Where there is a line before, with the end of that, else with that of the last one.
      const bool isFirst = leftBegin == 0;
      const bool isWithEnd = isFirst && leftEnd < left.size();
      std::string lines;
      for (std::size_t i = rightBegin; i < rightEnd; ++i)
      {
        lines.append(isFirst && i == 0 ? "" : "\n").append(right[i]);
      }
      lines += isWithEnd && rightBegin < rightEnd ? "\n" : "";
      const std::uint32_t end =
          isWithEnd ? static_cast<std::uint32_t>(before.beginOf(static_cast<int>(leftEnd) + 1))
                    : endOf(leftEnd);
      edits.push_back({{endOf(leftBegin), end}, std::move(lines)});
    }
    leftBegin = leftEnd + 1;
    rightBegin = rightEnd + 1;
  }
  return edits;
}
} // namespace

std::vector<source::Edit> fixAll(const Manuscript& manuscript)
{
  std::vector<source::Edit> first = mendsOf(manuscript.findings());
  std::string text = manuscript.text();
  std::vector<source::Edit> edits = first;
  int rounds = 0;
  for (; !edits.empty() && rounds < mostRounds; ++rounds)
  {
    text = source::apply(source::Document::parseText(std::move(text)), std::move(edits));
    edits = mendsOf(check::checkDraft(text, *manuscript.checkOptions()));
  }
  if (rounds <= 1)
  {
    return first;
  }
  return differences(manuscript.lines(), source::Lines(text));
}

} // namespace tool::lsp
