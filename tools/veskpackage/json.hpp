// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_JSON_HPP
#define TOOLS_VESKPACKAGE_JSON_HPP

#include <vesk/anyvalue.hpp>

#include <string>
#include <utility>
#include <vector>

namespace tool
{

/// Any value that the type system describes as JSON: structs and maps with string keys as objects,
/// members in published order; other maps as arrays of pairs; bytes that are no UTF-8 as U+FFFD;
/// values of unknown kind, and numbers that JSON cannot express, as null. Indented by
/// \p indentation, on one line when that is negative. \p furtherMembers are added behind a struct's
/// own.
std::string
toJson(const vesk::AnyConstReference& value, int indentation,
       const std::vector<std::pair<std::string, vesk::AnyConstReference>>& furtherMembers = {});

} // namespace tool

#endif
