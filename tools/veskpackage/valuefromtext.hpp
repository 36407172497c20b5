// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_VALUEFROMTEXT_HPP
#define TOOLS_VESKPACKAGE_VALUEFROMTEXT_HPP

#include "fieldpath.hpp"

#include <vesk/anyvalue.hpp>

namespace tool
{

/// Converts a text to a value of a type: for a string takes it as it is, for all else parses it as
/// JSON. JSON objects become structs, whose other members get their default, or maps. Throws
/// FieldError when the text does not suit the type; \p path, where the value will be, is for its
/// message.
vesk::AnyValue valueFromText(const vesk::TypeInterface& type, const std::string& text,
                             FieldPath path);

} // namespace tool

#endif
