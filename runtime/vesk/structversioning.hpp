// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_STRUCTVERSIONING_HPP
#define VESK_STRUCTVERSIONING_HPP

#include <vesk/export.hpp>
#include <vesk/typeinterface.hpp>

#include <string>
#include <vector>

namespace vesk
{

/// Sets the \p missing members of \p value, a struct of \p type, to the default values of their
/// types. False, and nothing is changed, when one of them is not among \p addedFields
/// or is no member.
VESK_EXPORT bool fillMissingFieldsWithDefaultValues(const StructTypeInterface& type, void* value,
                                                    const std::vector<std::string>& missing,
                                                    const std::vector<std::string>& addedFields);

/// Lets a struct to which fields have been added be exchanged with peers that know it without them:
/// on the way in the added fields get their types' default values, on the way out they are dropped.
/// Any other difference makes the conversion fail.
class VESK_EXPORT StructVersioningDelegateAddFields
{
public:
  explicit StructVersioningDelegateAddFields(std::vector<std::string> namesOfAddedFields);

  const std::vector<std::string>& addedFields() const { return names; }

  /// For StructTypeInterface::convertFrom.
  bool convertFrom(const StructTypeInterface& type, void* value,
                   const MemberDifference& difference) const;
  /// For StructTypeInterface::convertTo.
  bool convertTo(const MemberDifference& difference) const;

private:
  std::vector<std::string> names;
};

} // namespace vesk

#endif
