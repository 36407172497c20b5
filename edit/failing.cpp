// SPDX-License-Identifier: Apache-2.0
#include <edit/failing.hpp>
#include <format/nearest.hpp>

#include <algorithm>

namespace vesk::edit
{
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
  std::string meant;
  for (const std::string& other : format::nearest(name, names))
  {
    meant += (meant.empty() ? " (did you mean " : " or ") + toText({other});
  }
  return meant.empty() ? text : text + meant + "?)";
}

void failAt(const FieldPath& path, const std::string& why)
{
  throw FieldError(placeAt(path, path.size()) + ": " + why);
}

} // namespace vesk::edit
