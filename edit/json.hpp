// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_JSON_HPP
#define EDIT_JSON_HPP

#include <edit/export.hpp>
#include <vesk/anyvalue.hpp>

#include <string>
#include <utility>
#include <vector>

namespace vesk::edit
{

/// What a registered member of a struct is called, as friendlyName() says it.
using MemberNaming = std::string (*)(const TypeInterface& type, const std::string& memberName);

/// Any value that the type system describes as JSON: structs and maps with string keys as objects,
/// members in published order and under their registered names, or as \p naming calls them; other
/// maps as arrays of pairs; bytes that are no UTF-8 as U+FFFD; values of unknown kind, numbers that
/// JSON cannot express, and what is empty, as null. Indented by \p indentation, on one line when that
/// is negative; control characters are escaped. \p furtherMembers are added behind a struct's own;
/// their names must be new, and \p value be a struct or a map with string keys then.
VESKPACKAGE_EDIT_EXPORT std::string
toJson(const AnyConstReference& value, int indentation, MemberNaming naming = nullptr,
       const std::vector<std::pair<std::string, AnyConstReference>>& furtherMembers = {});

} // namespace vesk::edit

#endif
