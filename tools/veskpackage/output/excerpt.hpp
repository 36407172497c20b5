// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_EXCERPT_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_EXCERPT_HPP

#include "output/checkedfile.hpp"

#include <ostream>

namespace tool
{

/// Prints the line in which something was found, with a mark below that, and how it can be mended:
///
///    12 | <name language="fr">
///       |       ^~~~~~~~
///
/// Of a long line a part around the mark is shown, and of several lines the first. A tab is shown as
/// blanks, and what a terminal would obey, or not show, by its code. Prints nothing for what is
/// nowhere in the text, or not known where exactly.
void printExcerpt(std::ostream& out, const CheckedFile& file, const vesk::check::Finding& finding,
                  bool isColored);

} // namespace tool

#endif
