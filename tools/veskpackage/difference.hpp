// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_DIFFERENCE_HPP
#define TOOLS_VESKPACKAGE_DIFFERENCE_HPP

#include "fieldpath.hpp"

#include <vesk/anyreference.hpp>

#include <vector>

namespace tool
{

/// A part of a value, and the way to it. Both are empty when the value has no such part.
struct FieldValue
{
  FieldPath path;
  vesk::AnyConstReference value;
};

/// A part that two values do not have alike. The two paths differ in indexes when elements were
/// added or removed in front.
struct Difference
{
  FieldValue before;
  FieldValue after;

  /// Where it is for people: in the second value, or in the first what only that has.
  const FieldPath& path() const { return after.value.isValid() ? after.path : before.path; }
};

/// In what two values of one type differ: structs by their members, maps by their keys, in the order
/// in which they hold them. Elements of lists are compared with those that they have become: first
/// equal ones in the same order, between these structs whose first member is equal (it tells what
/// they are), and what is left over there in turn; a moved element is one that is removed and one
/// that is added. It takes time in proportion to n log n. The views are of the two values' parts.
///
/// Members go by their friendly names. Values of different types differ as a whole; those of a type
/// that nothing is known of never do.
std::vector<Difference> differences(const vesk::AnyConstReference& before,
                                    const vesk::AnyConstReference& after);

} // namespace tool

#endif
