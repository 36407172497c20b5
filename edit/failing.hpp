// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_FAILING_HPP
#define EDIT_FAILING_HPP

#include <edit/fieldpath.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vesk::edit
{

/// Where the first steps of a path lead, for messages.
std::string placeAt(const FieldPath& path, std::size_t depth);

/// Lists what could have been written instead of a name, and what may have been meant by it.
std::string choiceInsteadOf(const std::string& name, const std::vector<std::string>& names);

/// Throws FieldError for what is at a path.
[[noreturn]] void failAt(const FieldPath& path, const std::string& why);

} // namespace vesk::edit

#endif
