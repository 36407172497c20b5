// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyvalue.hpp>
#include <vesk/structversioning.hpp>

#include <algorithm>
#include <utility>

namespace vesk
{
namespace
{
bool areAmong(const std::vector<std::string>& names, const std::vector<std::string>& allowed)
{
  return std::all_of(names.begin(), names.end(),
                     [&allowed](const std::string& name)
                     { return std::find(allowed.begin(), allowed.end(), name) != allowed.end(); });
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
  for (const std::string& name : missing)
  {
    const std::size_t index = type.memberIndex(name).value();
    AnyValue initial(*type.memberTypes()[index]);
    type.setMember(value, index, initial.reference().address());
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
