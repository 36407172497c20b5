// SPDX-License-Identifier: Apache-2.0
#include <edit/failing.hpp>

#include <algorithm>
#include <iterator>

namespace vesk::edit
{
namespace
{
/// Whether one may be a typing error for the other: they differ in one place only, by at most two
/// characters and less than half of the longer name.
bool areAlike(const std::string& left, const std::string& right)
{
  const auto& [shorter, longer] =
      std::minmax(left, right, [](const auto& a, const auto& b) { return a.size() < b.size(); });
  const auto head = std::mismatch(shorter.begin(), shorter.end(), longer.begin()).first;
  const auto tail =
      std::mismatch(shorter.rbegin(), std::make_reverse_iterator(head), longer.rbegin()).second;
  const auto differing = (longer.rend() - tail) - (head - shorter.begin());
  return differing <= 2 && static_cast<std::size_t>(differing) * 2 < longer.size();
}
} // namespace

std::string placeAt(const FieldPath& path, std::size_t depth)
{
  const auto end = path.begin() + static_cast<std::ptrdiff_t>(depth);
  return depth == 0 ? "the package" : toText(FieldPath(path.begin(), end));
}

std::string choiceInsteadOf(const std::string& name, const std::vector<std::string>& names)
{
  constexpr std::size_t most = 30;
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
  {
    text += (i == 0 ? "" : ", ") + toText({names[i]});
  }
  if (names.size() > most)
  {
    text += " and " + std::to_string(names.size() - most) + " more";
  }
  const auto alike =
      std::find_if(names.begin(), names.end(),
                   [&name](const std::string& other) { return areAlike(other, name); });
  return alike == names.end() ? text : text + " (did you mean " + toText({*alike}) + "?)";
}

void failAt(const FieldPath& path, const std::string& why)
{
  throw FieldError(placeAt(path, path.size()) + ": " + why);
}

} // namespace vesk::edit
