// SPDX-License-Identifier: Apache-2.0
#include <format/nearest.hpp>

#include <algorithm>
#include <array>
#include <cstddef>

namespace vesk::format
{
namespace
{
constexpr std::size_t longest = 64;
/// What a letter costs that differs only in case, and one that differs: all letters of a name in
/// another case cost less than one that differs.
constexpr std::size_t caseCost = 1;
constexpr std::size_t editCost = longest + 1;

char lower(char letter)
{
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::size_t replacing(char left, char right)
{
  return left == right ? 0 : lower(left) == lower(right) ? caseCost : editCost;
}

/// What it costs to make one name of another, neither of which is longer than the longest.
std::size_t distance(const std::string& from, const std::string& to)
{
  // costs[j], in the row of i: of the first j letters of one from the first i letters of the other
  std::array<std::array<std::size_t, longest + 1>, 3> rows; // only what has been written is read
  for (std::size_t i = 0; i <= from.size(); ++i)
  {
    auto& costs = rows[i % 3];
    const auto& before = rows[(i + 2) % 3];
    const auto& beforeThat = rows[(i + 1) % 3];
    for (std::size_t j = 0; j <= to.size(); ++j)
    {
      if (i == 0 || j == 0)
      {
        costs[j] = (i + j) * editCost;
        continue;
      }
      costs[j] = std::min({before[j] + editCost, costs[j - 1] + editCost,
                           before[j - 1] + replacing(from[i - 1], to[j - 1])});
      if (i > 1 && j > 1 && lower(from[i - 1]) == lower(to[j - 2]) &&
          lower(from[i - 2]) == lower(to[j - 1]))
      {
        costs[j] = std::min(costs[j], beforeThat[j - 2] + editCost);
      }
    }
  }
  return rows[from.size() % 3][to.size()];
}

/// How many letters may differ where the longer name has so many.
std::size_t mostEdits(std::size_t size) { return size / 3; }
} // namespace

std::vector<std::string> nearest(const std::string& misspelt, const std::vector<std::string>& names)
{
  std::vector<std::string> found;
  std::size_t least = 0;
  for (const std::string& name : names)
  {
    const std::size_t longer = std::max(misspelt.size(), name.size());
    const std::size_t most = mostEdits(longer);
    if (longer > longest || longer - std::min(misspelt.size(), name.size()) > most)
    {
      continue;
    }
    const std::size_t cost = distance(misspelt, name);
    if (cost / editCost > most || (!found.empty() && cost > least))
    {
      continue;
    }
    if (cost < least)
    {
      found.clear();
    }
    least = cost;
    found.push_back(name);
  }
  return found;
}

} // namespace vesk::format
