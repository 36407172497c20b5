// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyvalue.hpp>
#include <vesk/structversioning.hpp>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace vesk
{
namespace
{
bool areAmong(const std::vector<std::string>& names, const std::vector<std::string>& allowed)
{
  const std::set<std::string_view> all(allowed.begin(), allowed.end());
  return std::all_of(names.begin(), names.end(),
                     [&all](const std::string& name) { return all.count(name) != 0; });
}
} // namespace

bool fillMissingFieldsWithDefaultValues(const StructTypeInterface& type, void* value,
                                        const std::vector<std::string>& missing,
                                        const std::vector<std::string>& addedFields)
{
  if (!areAmong(missing, addedFields) || !areAmong(missing, type.memberNames()))
  {
    return false;
  }
  const std::set<std::string_view> toFill(missing.begin(), missing.end());
  for (std::size_t index = 0; index < type.memberNames().size(); ++index)
  {
    if (toFill.count(type.memberNames()[index]) != 0)
    {
      AnyValue initial(*type.memberTypes()[index]);
      type.setMember(value, index, initial.reference().address());
    }
  }
  return true;
}

StructVersioningDelegateAddFields::StructVersioningDelegateAddFields(
    std::vector<std::string> namesOfAddedFields)
    : names(std::move(namesOfAddedFields))
{}

bool StructVersioningDelegateAddFields::convertFrom(const StructTypeInterface& type, void* value,
                                                    const MemberDifference& difference) const
{
  return difference.surplus.empty() &&
         fillMissingFieldsWithDefaultValues(type, value, difference.missing, names);
}

bool StructVersioningDelegateAddFields::convertTo(const MemberDifference& difference) const
{
  return difference.surplus.empty() && areAmong(difference.missing, names);
}

} // namespace vesk
