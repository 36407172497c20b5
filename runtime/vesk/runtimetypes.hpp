// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_RUNTIMETYPES_HPP
#define VESK_RUNTIMETYPES_HPP

#include <vesk/export.hpp>
#include <vesk/typeinterface.hpp>

#include <string>
#include <vector>

namespace vesk
{

/// A member of a struct that is described while the program runs.
struct RuntimeMember
{
  std::string name;
  TypeInterface* type = nullptr;
};

/// Describes a struct that this program has no class for, as when a peer says how its version of a
/// record looks. A value of it is made with AnyValue(*description); its members start with their
/// types' defaults. The same arguments give the same description, which lives to the end of the
/// process. Throws std::invalid_argument when two members have the same name or one has no type, and
/// when described types are more than 128 deep within each other or a value would consist of more
/// than 65,536 values. Any thread may call it.
VESK_EXPORT StructTypeInterface* describeStruct(const std::string& name,
                                                const std::vector<RuntimeMember>& members,
                                                const std::vector<std::string>& addedFields = {});

/// Describes a list of elements of a type that may have been described while the program runs. The
/// same type gives the same description. Throws std::invalid_argument when \p elementType is null, and
/// when described types are more than 128 deep within each other.
VESK_EXPORT ListTypeInterface* describeList(TypeInterface* elementType);

} // namespace vesk

#endif
