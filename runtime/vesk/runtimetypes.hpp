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
  const TypeInterface* type = nullptr;
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

/// Describes a list of elements, or a map, of types that may have been described while the program
/// runs. The same types give the same description. Keys are texts, numbers or bools, and stand in
/// their order. Throws std::invalid_argument when a type is null, when that of the keys is another,
/// and when described types are more than 128 deep within each other. Any thread may call these.
/// \{
VESK_EXPORT ListTypeInterface* describeList(const TypeInterface* elementType);
VESK_EXPORT MapTypeInterface* describeMap(const TypeInterface* keyType,
                                          const TypeInterface* valueType);
/// \}

} // namespace vesk

#endif
