// SPDX-License-Identifier: Apache-2.0
#include <edit/failing.hpp>
#include <edit/fieldstep.hpp>
#include <edit/json.hpp>
#include <edit/membername.hpp>

#include <algorithm>
#include <optional>
#include <vector>

namespace vesk::edit
{

std::string keyName(const AnyConstReference& key)
{
  return key.is<std::string>() ? key.as<std::string>() : toJson(key, -1);
}

std::size_t memberIndex(const StructTypeInterface& type, const FieldPath& path, std::size_t depth)
{
  const auto& name = std::get<std::string>(path[depth]);
  if (const std::optional<std::size_t> index = type.memberIndex(name))
  {
    return *index;
  }
  std::vector<std::string> names;
  for (const std::string& memberName : type.memberNames())
  {
    names.push_back(friendlyName(type, memberName));
  }
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end())
  {
    failAt(path, placeAt(path, depth) + " has no member \"" + name + "\"; it has " +
                     choiceInsteadOf(name, names));
  }
  return static_cast<std::size_t>(found - names.begin());
}

} // namespace vesk::edit
