// SPDX-License-Identifier: Apache-2.0
#include <package/listmaps.hpp>

#include <algorithm>
#include <iterator>

namespace vesk
{
namespace
{
/// Calls \p action with the list of \p key and the first element equal to \p value.
template <typename Action>
bool onFirstEqual(ListMap& map, const std::string& key, const std::string& value, Action action)
{
  const auto entry = map.find(key);
  if (entry == map.end())
  {
    return false;
  }
  std::list<std::string>& values = entry->second;
  const auto found = std::find(values.begin(), values.end(), value);
  if (found == values.end())
  {
    return false;
  }
  action(values, found);
  return true;
}
} // namespace

void appendStringInMapOfListOfString(ListMap& map, const std::string& key, const std::string& value)
{
  map[key].push_back(value);
}

void insertStringInMapOfListOfString(ListMap& map, const std::string& key, const std::string& value,
                                     int index)
{
  std::list<std::string>& values = map[key];
  const bool inside = index >= 0 && static_cast<std::size_t>(index) < values.size();
  values.insert(inside ? std::next(values.begin(), index) : values.end(), value);
}

bool updateStringInMapOfListOfString(ListMap& map, const std::string& key,
                                     const std::string& oldValue, const std::string& newValue)
{
  return onFirstEqual(map, key, oldValue, [&](auto&, auto found) { *found = newValue; });
}

bool removeStringInMapOfListOfString(ListMap& map, const std::string& key, const std::string& value)
{
  return onFirstEqual(map, key, value, [](auto& values, auto found) { values.erase(found); });
}

} // namespace vesk
