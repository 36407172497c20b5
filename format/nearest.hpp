// SPDX-License-Identifier: Apache-2.0
#ifndef FORMAT_NEAREST_HPP
#define FORMAT_NEAREST_HPP

#include <format/export.hpp>

#include <string>
#include <vector>

namespace vesk::format
{

/// Of some names those that are most likely meant by a misspelt one, in their order: the ones to
/// which the fewest letters have to be added, dropped, replaced or swapped with the next. None where
/// that were more than a third of the letters, or a name is longer than 64 bytes. The case of
/// letters counts only among names that are otherwise as near.
VESKPACKAGE_FORMAT_EXPORT std::vector<std::string> nearest(const std::string& misspelt,
                                                           const std::vector<std::string>& names);

} // namespace vesk::format

#endif
