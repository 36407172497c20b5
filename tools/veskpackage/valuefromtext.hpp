// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_VALUEFROMTEXT_HPP
#define TOOLS_VESKPACKAGE_VALUEFROMTEXT_HPP

#include "fieldpath.hpp"

#include <vesk/anyvalue.hpp>

namespace tool
{

/// A value of a type: for strings the text as it is, for all else what it says in JSON. Objects make
/// structs, whose further members get their default, and maps. Throws FieldError when the type takes
/// nothing of the kind; \p path is where the value will be.
vesk::AnyValue valueFromText(const vesk::TypeInterface& type, const std::string& text,
                             FieldPath path);

} // namespace tool

#endif
