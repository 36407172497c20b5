// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_MEMBERNAME_HPP
#define TOOLS_VESKPACKAGE_MEMBERNAME_HPP

#include "fieldpath.hpp"

#include <vesk/typeinterface.hpp>

namespace tool
{

/// What a registered member is called for people, as "names" for "langToName": the name that it has
/// in a package's variant form. Most are called as they are registered.
std::string friendlyName(const vesk::TypeInterface& record, const std::string& memberName);

/// The member of a struct that the step at a depth names, by its registered or its friendly name.
/// Throws FieldError when there is none.
std::size_t memberIndex(const vesk::StructTypeInterface& type, const FieldPath& path,
                        std::size_t depth);

/// Lists what could have been written instead of a name, and what may have been meant by it.
std::string choiceInsteadOf(const std::string& name, const std::vector<std::string>& names);

} // namespace tool

#endif
