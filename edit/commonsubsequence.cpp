// SPDX-License-Identifier: Apache-2.0
#include <edit/commonsubsequence.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_map>

namespace vesk::edit
{
namespace
{
/// A text in more places than this is not tried in all of them, which could take quadratic time:
/// each occurrence takes the next free place.
constexpr std::size_t mostPlaces = 32;

/// The longest chain of pairs in which the second indexes increase (patience sorting). The first
/// indexes in \p pairs must not decrease.
IndexPairs increasing(const IndexPairs& pairs)
{
  // ends: for each length, the last pair of the chain that is easiest to continue. previous: for
  // each pair, the pair before it in its chain.
  std::vector<std::size_t> ends;
  std::vector<std::size_t> previous(pairs.size());
  for (std::size_t i = 0; i < pairs.size(); ++i)
  {
    const auto end = std::lower_bound(ends.begin(), ends.end(), pairs[i].second,
                                      [&pairs](std::size_t chainEnd, std::size_t index)
                                      { return pairs[chainEnd].second < index; });
    previous[i] = end == ends.begin() ? i : *std::prev(end);
    if (end == ends.end())
    {
      ends.push_back(i);
    }
    else
    {
      *end = i;
    }
  }
  IndexPairs chain(ends.size());
  std::size_t i = ends.empty() ? 0 : ends.back();
  for (auto pair = chain.rbegin(); pair != chain.rend(); ++pair)
  {
    *pair = pairs[i];
    i = previous[i];
  }
  return chain;
}
} // namespace

IndexPairs commonSubsequence(const std::vector<std::string>& first,
                             const std::vector<std::string>& second)
{
  const auto head = static_cast<std::size_t>(
      std::mismatch(first.begin(), first.end(), second.begin(), second.end()).first -
      first.begin());
  const auto headSize = static_cast<std::ptrdiff_t>(head);
  const auto tail =
      static_cast<std::size_t>(std::mismatch(first.rbegin(), first.rend() - headSize,
                                             second.rbegin(), second.rend() - headSize)
                                   .first -
                               first.rbegin());

  // The places of a text are listed from last to first, so a chain uses each first index only once.
  std::unordered_map<std::string_view, std::vector<std::size_t>> places;
  for (std::size_t i = second.size() - tail; i-- > head;)
  {
    places[second[i]].push_back(i);
  }
  IndexPairs candidates;
  for (std::size_t i = head; i < first.size() - tail; ++i)
  {
    std::vector<std::size_t>& found = places[first[i]];
    if (found.size() <= mostPlaces)
    {
      std::transform(found.begin(), found.end(), std::back_inserter(candidates),
                     [i](std::size_t place) { return std::pair(i, place); });
    }
    else
    {
      candidates.emplace_back(i, found.back());
      found.pop_back();
    }
  }

  IndexPairs pairs;
  for (std::size_t i = 0; i < head; ++i)
  {
    pairs.emplace_back(i, i);
  }
  const IndexPairs between = increasing(candidates);
  pairs.insert(pairs.end(), between.begin(), between.end());
  for (std::size_t i = tail; i > 0; --i)
  {
    pairs.emplace_back(first.size() - i, second.size() - i);
  }
  return pairs;
}

} // namespace vesk::edit
