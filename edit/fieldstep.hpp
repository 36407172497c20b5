// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_FIELDSTEP_HPP
#define EDIT_FIELDSTEP_HPP

#include <edit/fieldpath.hpp>
#include <vesk/anyreference.hpp>

#include <cstddef>
#include <string>

namespace vesk::edit
{

/// The description of a value whose kind is known.
template <typename Interface>
const Interface& describedAs(const AnyConstReference& value)
{
  return *static_cast<const Interface*>(value.type());
}

/// The name by which a path knows a map's entry: a text as it is, any other key as JSON.
std::string keyName(const AnyConstReference& key);

/// The member of a struct that the step at a depth names, by its registered or its friendly name.
/// Throws FieldError when there is none.
std::size_t memberIndex(const StructTypeInterface& type, const FieldPath& path, std::size_t depth);

} // namespace vesk::edit

#endif
