// SPDX-License-Identifier: Apache-2.0
#include "membername.hpp"

#include <format/format.hpp>

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

namespace tool
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

/// The names of fields for people, by record and registered name.
std::map<std::pair<std::string, std::string>, std::string> friendlyNames()
{
  std::map<std::pair<std::string, std::string>, std::string> names;
  for (const vesk::format::Field& field : vesk::format::fields())
  {
    names[{field.record, field.registered}] = field.name;
  }
  return names;
}
} // namespace

std::string friendlyName(const vesk::TypeInterface& record, const std::string& memberName)
{
  static const auto names = friendlyNames();
  const auto known = names.find({record.name(), memberName});
  return known == names.end() ? memberName : known->second;
}

std::size_t memberIndex(const vesk::StructTypeInterface& type, const FieldPath& path,
                        std::size_t depth)
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

} // namespace tool
