// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_MEMBERPLACE_HPP
#define EDIT_MEMBERPLACE_HPP

#include <format/format.hpp>
#include <vesk/typeinterface.hpp>

#include <string>

namespace vesk::edit
{

/// Where a manifest holds a member of a record, given by its registered name. A Manifest's members are
/// those of the package and the web content.
format::Place placeOfMember(const TypeInterface& record, const std::string& member);

} // namespace vesk::edit

#endif
