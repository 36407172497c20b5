// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_MERGED_HPP
#define TESTS_MERGED_HPP

#include "filledpackage.hpp"

#include <nlohmann/json.hpp>

using Json = nlohmann::json;

/// All that a value holds, by its description.
template <typename Value>
Json heldIn(const Value& value)
{
  return Json::parse(contentIn(value));
}

/// What a record, a map, a list or a text is to hold when another one of its kind is added, as all
/// readers do it: texts and flags are replaced, lists appended, maps merged.
inline Json merged(Json before, const Json& added)
{
  if (before.is_array())
  {
    before.insert(before.end(), added.begin(), added.end());
    return before;
  }
  if (!before.is_object())
  {
    return added;
  }
  for (const auto& [key, value] : added.items())
  {
    before[key] = before.contains(key) ? merged(before[key], value) : value;
  }
  return before;
}

#endif
