// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_FITTING_HPP
#define CHECK_FITTING_HPP

#include <check/elements.hpp>

namespace vesk::check
{

/// Whether an element surely means one of the format, to judge by its name and by all that stands in
/// it: under that name, no text in it would be skipped, no text that says no would be taken for yes, no
/// comment for an entry, and, unless only the case of the name's letters is another, its attributes and
/// children would be known, at least by what people write for them.
bool isSurely(const Node& element, const CheckedElement& meant);

} // namespace vesk::check

#endif
