// SPDX-License-Identifier: Apache-2.0
#include "output/unifieddiff.hpp"

#include <edit/commonsubsequence.hpp>

#include <algorithm>
#include <sstream>

namespace tool
{

using vesk::edit::commonSubsequence;
using vesk::edit::IndexPairs;

namespace
{
/// How many equal lines are shown around those that differ.
constexpr std::size_t context = 3;

std::vector<std::string> linesOf(const std::string& text)
{
  std::vector<std::string> lines;
  std::istringstream input(text);
  for (std::string line; std::getline(input, line);)
  {
    lines.push_back(line);
  }
  if (!text.empty() && text.back() != '\n')
  {
    lines.back() += "\n\\ No newline at end of file";
  }
  return lines;
}

/// Where lines begin and end in one of the texts.
struct Range
{
  std::size_t begin;
  std::size_t end;

  bool isEmpty() const { return begin == end; }
};

/// Lines of the one text in the place of lines of the other.
struct Change
{
  Range left;
  Range right;
};

std::vector<Change> changesBetween(const std::vector<std::string>& left,
                                   const std::vector<std::string>& right)
{
  std::vector<Change> changes;
  IndexPairs equal = commonSubsequence(left, right);
  equal.emplace_back(left.size(), right.size());
  Change change{{0, 0}, {0, 0}};
  for (const auto& [leftLine, rightLine] : equal)
  {
    change.left.end = leftLine;
    change.right.end = rightLine;
    if (!change.left.isEmpty() || !change.right.isEmpty())
    {
      changes.push_back(change);
    }
    change.left.begin = leftLine + 1;
    change.right.begin = rightLine + 1;
  }
  return changes;
}

void printRange(std::ostream& out, const Range& range)
{
  out << range.begin + (range.isEmpty() ? 0 : 1);
  if (range.end - range.begin != 1)
  {
    out << ',' << range.end - range.begin;
  }
}

void printLines(std::ostream& out, char mark, const std::vector<std::string>& lines,
                const Range& range)
{
  for (std::size_t i = range.begin; i < range.end; ++i)
  {
    out << mark << lines[i] << '\n';
  }
}

/// Prints changes that are near each other, with the lines around and between them.
void printHunk(std::ostream& out, const std::vector<std::string>& left,
               const std::vector<std::string>& right, const Change* first, const Change* last)
{
  const std::size_t before = std::min(context, first->left.begin);
  const std::size_t behind = std::min(context, left.size() - last->left.end);
  out << "@@ -";
  printRange(out, {first->left.begin - before, last->left.end + behind});
  out << " +";
  printRange(out, {first->right.begin - before, last->right.end + behind});
  out << " @@\n";
  std::size_t shown = first->left.begin - before;
  for (const Change* change = first; change <= last; ++change)
  {
    printLines(out, ' ', left, {shown, change->left.begin});
    printLines(out, '-', left, change->left);
    printLines(out, '+', right, change->right);
    shown = change->left.end;
  }
  printLines(out, ' ', left, {shown, shown + behind});
}
} // namespace

void printUnifiedDiff(std::ostream& out, const std::string& leftName, const std::string& left,
                      const std::string& rightName, const std::string& right)
{
  const std::vector<std::string> leftLines = linesOf(left);
  const std::vector<std::string> rightLines = linesOf(right);
  const std::vector<Change> changes = changesBetween(leftLines, rightLines);
  if (!changes.empty())
  {
    out << "--- " << leftName << "\n+++ " << rightName << '\n';
  }
  const auto isFar = [](const Change& before, const Change& behind)
  { return behind.left.begin - before.left.end > 2 * context; };
  for (auto first = changes.begin(); first != changes.end();)
  {
    const auto last = std::adjacent_find(first, changes.end(), isFar);
    const auto end = last == changes.end() ? last : last + 1;
    printHunk(out, leftLines, rightLines, &*first, &*(end - 1));
    first = end;
  }
}

} // namespace tool
