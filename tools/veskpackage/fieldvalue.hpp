// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FIELDVALUE_HPP
#define TOOLS_VESKPACKAGE_FIELDVALUE_HPP

#include "fieldpath.hpp"

#include <vesk/anyvalue.hpp>

namespace tool
{

/// Members are known by their registered and by their friendly names. A step leads through an
/// AnyValue to what it holds.

/// The name by which a path knows a map's entry: a text as it is, any other key as JSON.
std::string keyName(const vesk::AnyConstReference& key);

/// The part of a package, or of any value, to which the path leads. Throws FieldError, which says
/// how far it leads and what is there.
vesk::AnyConstReference valueAt(const vesk::AnyConstReference& root, const FieldPath& path);

/// Sets the part to which the path leads: a string to the text as it is, and anything else to what
/// the text says in JSON (true, 12, ["en_US", "de"], {"en_US": "Hello"}). Members of structs that it
/// leaves out get their default. A map's entry is made when there is none under the key; the index
/// behind the last element of a list appends one. Throws FieldError, and has changed nothing then.
void setAt(const vesk::AnyReference& root, const FieldPath& path, const std::string& text);

} // namespace tool

#endif
