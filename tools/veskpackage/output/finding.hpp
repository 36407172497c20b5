// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_FINDING_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_FINDING_HPP

#include <check/manifestcheck.hpp>

#include <ostream>
#include <string>

namespace tool
{

/// What a terminal is told so that it shows something in the colour of a severity.
const char* colorOf(vesk::check::Severity severity);

/// Prints a finding on one line: `path:line:column: severity: message [tag] /place`.
void printFinding(std::ostream& out, const std::string& name, const vesk::check::Finding& finding,
                  bool isColored);

} // namespace tool

#endif
