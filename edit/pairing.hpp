// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_PAIRING_HPP
#define EDIT_PAIRING_HPP

#include <vesk/anyreference.hpp>

#include <cstddef>
#include <optional>
#include <vector>

namespace vesk::edit
{

/// Indexes of elements that are compared with each other; one of them may be missing.
struct Pair
{
  std::optional<std::size_t> before;
  std::optional<std::size_t> after;
};

/// Pairs the elements of two lists as differences() says. Both indexes increase; every element is in
/// one pair.
std::vector<Pair> pairsOf(const std::vector<AnyConstReference>& before,
                          const std::vector<AnyConstReference>& after);

} // namespace vesk::edit

#endif
