// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_VALUEFROMTEXT_HPP
#define EDIT_VALUEFROMTEXT_HPP

#include <edit/export.hpp>
#include <edit/fieldpath.hpp>
#include <vesk/anyvalue.hpp>

#include <string>

namespace vesk::edit
{

/// Converts a text to a value of a type: for a string takes it as it is, for all else parses it as
/// JSON. JSON objects become structs, whose other members get their default, or maps; numbers have to
/// fit the type, and no name may stand twice in an object. Throws FieldError when the text does not suit the type, and whatever the text for a
/// type of unknown kind and for AnyValue; \p path, where the value will be, is for its message.
VESKPACKAGE_EDIT_EXPORT AnyValue valueFromText(const TypeInterface& type, const std::string& text,
                                               FieldPath path);

} // namespace vesk::edit

#endif
