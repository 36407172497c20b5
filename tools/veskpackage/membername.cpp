// SPDX-License-Identifier: Apache-2.0
#include "membername.hpp"

#include <format/format.hpp>

#include <algorithm>
#include <iterator>
#include <optional>

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

const std::vector<vesk::format::Field>& knownFields()
{
  static const std::vector<vesk::format::Field> fields = vesk::format::fields();
  return fields;
}
} // namespace

std::string friendlyName(const std::string& memberName)
{
  const std::vector<vesk::format::Field>& fields = knownFields();
  const auto known = std::find_if(fields.begin(), fields.end(),
                                  [&memberName](const vesk::format::Field& field)
                                  { return field.registered == memberName; });
  return known == fields.end() ? memberName : known->name;
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
    names.push_back(friendlyName(memberName));
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
