// SPDX-License-Identifier: Apache-2.0
#include <check/fixing.hpp>

#include <algorithm>
#include <map>
#include <set>

namespace vesk::check
{
namespace
{
using source::Edit;
using source::Range;

/// More of a rule are mended in the next round: a finding takes some hundred bytes.
constexpr std::size_t mostAtOnce = 100000;
/// Far more than the halvings by which sections are merged, and than what faults hide.
constexpr int mostRounds = 1000;

/// The ranges of edits that are made at once.
class Edited
{
public:
  bool canTake(const Range& range) const
  {
    const auto behind = parts.lower_bound(std::max(range.end, range.begin + 1));
    const bool meetsPart = behind != parts.begin() && std::prev(behind)->second > range.begin &&
                           (range.size() != 0 || std::prev(behind)->first < range.begin);
    const auto place = places.upper_bound(range.begin);
    return !meetsPart && (place == places.end() || *place >= range.end);
  }

  void take(const Range& range)
  {
    if (range.size() != 0)
    {
      parts.emplace(range.begin, range.end);
    }
    else
    {
      places.insert(range.begin);
    }
  }

private:
  std::map<std::uint32_t, std::uint32_t> parts; // begins and ends
  std::set<std::uint32_t> places;               // where something is put in
};
} // namespace

std::vector<const Finding*> mendableAtOnce(const std::vector<Finding>& findings)
{
  Edited edited;
  std::vector<const Finding*> taken;
  for (const Finding& finding : findings)
  {
    const std::vector<Edit> edits = finding.mend ? finding.mend->edits : std::vector<Edit>();
    const bool canBeMended =
        std::all_of(edits.begin(), edits.end(),
                    [&edited](const Edit& edit) { return edited.canTake(edit.range); });
    if (!edits.empty() && canBeMended)
    {
      taken.push_back(&finding);
      for (const Edit& edit : edits)
      {
        edited.take(edit.range);
      }
    }
  }
  return taken;
}

Fixed fix(const std::string& bytes, const Options& options)
{
  Fixed fixed{bytes, 0, {}};
  Options all = options;
  all.mostOfARule = mostAtOnce;
  for (int round = 0; round < mostRounds; ++round)
  {
    const std::vector<Finding> findings = checkBytes(fixed.bytes, all).findings;
    const std::vector<const Finding*> mendable = mendableAtOnce(findings);
    std::vector<Edit> edits;
    for (const Finding* const finding : mendable)
    {
      edits.insert(edits.end(), finding->mend->edits.begin(), finding->mend->edits.end());
    }
    if (edits.empty())
    {
      break;
    }
    fixed.bytes = source::apply(source::Document::parse(fixed.bytes), std::move(edits));
    fixed.count += mendable.size();
    for (const Finding* const finding : mendable)
    {
      if (fixed.mended.size() < options.mostOfARule)
      {
        fixed.mended.push_back(*finding);
      }
    }
  }
  return fixed;
}

} // namespace vesk::check
