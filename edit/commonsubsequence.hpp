// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_COMMONSUBSEQUENCE_HPP
#define EDIT_COMMONSUBSEQUENCE_HPP

#include <edit/export.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace vesk::edit
{

/// Indexes into a first and a second list.
using IndexPairs = std::vector<std::pair<std::size_t, std::size_t>>;

/// Pairs equal texts of two lists so that both indexes increase: as many as possible, or nearly as
/// many when a text is in more than 32 places. Takes time in proportion to n log n, whatever the
/// lists are.
VESKPACKAGE_EDIT_EXPORT IndexPairs commonSubsequence(const std::vector<std::string>& first,
                                                     const std::vector<std::string>& second);

} // namespace vesk::edit

#endif
