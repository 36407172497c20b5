// SPDX-License-Identifier: Apache-2.0
#include "unifieddiff.hpp"

#include <dtl/dtl.hpp>
#include <sstream>
#include <vector>

namespace
{
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
} // namespace

void printUnifiedDiff(std::ostream& out, const std::string& leftName, const std::string& left,
                      const std::string& rightName, const std::string& right)
{
  dtl::Diff<std::string> diff(linesOf(left), linesOf(right));
  diff.onHuge();
  diff.compose();
  diff.composeUnifiedHunks();
  if (diff.getEditDistance() > 0)
  {
    out << "--- " << leftName << "\n+++ " << rightName << '\n';
    diff.printUnifiedFormat(out);
  }
}
