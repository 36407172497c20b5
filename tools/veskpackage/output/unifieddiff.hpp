// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_UNIFIEDDIFF_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_UNIFIEDDIFF_HPP

#include <ostream>
#include <string>

namespace tool
{

/// Prints how to get from one text to the other, as `diff -u` does; nothing when they are equal.
void printUnifiedDiff(std::ostream& out, const std::string& leftName, const std::string& left,
                      const std::string& rightName, const std::string& right);

} // namespace tool

#endif
