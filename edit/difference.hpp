// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_DIFFERENCE_HPP
#define EDIT_DIFFERENCE_HPP

#include <edit/export.hpp>
#include <edit/fieldpath.hpp>
#include <vesk/anyreference.hpp>

#include <vector>

namespace vesk::edit
{

/// A part of a value, and the way to it. Both are empty when the value has no such part.
struct FieldValue
{
  FieldPath path;
  AnyConstReference value;
};

/// A part in which two values differ. The two paths have different indexes when elements were added
/// or removed in front.
struct Difference
{
  FieldValue before;
  FieldValue after;

  /// The path to show to people: the one in the second value, or in the first if only that has the
  /// part.
  const FieldPath& path() const { return after.value.isValid() ? after.path : before.path; }
};

/// The differences between two values of one type. Structs are compared by members and maps by
/// keys, in their order. Elements of lists are paired before they are compared: first equal
/// elements in the same order; between those, structs whose first member, which identifies them, is
/// equal; and what is left over, in order. A moved element is reported as removed and added. Takes
/// time in proportion to n log n. The views refer to parts of the two values, and are as valid as
/// these.
///
/// Paths have the friendly names of members. Values of different types differ as a whole; values of
/// a type of unknown kind never differ.
VESKPACKAGE_EDIT_EXPORT std::vector<Difference> differences(const AnyConstReference& before,
                                                            const AnyConstReference& after);

} // namespace vesk::edit

#endif
