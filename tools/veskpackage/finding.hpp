// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_FINDING_HPP
#define TOOLS_FINDING_HPP

#include <check/manifestcheck.hpp>
#include <ostream>
#include <string>

/// Prints a finding on one line: `path:line:column: severity: message [tag] /place`.
void print(std::ostream& out, const std::string& name, const vesk::check::Finding& finding,
           bool isColored);

#endif
