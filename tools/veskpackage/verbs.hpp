// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VERBS_HPP
#define TOOLS_VERBS_HPP

#include "exitcode.hpp"

#include <string>
#include <vector>

/// Each verb of the program. Results go to standard output, complaints to standard error. A file
/// "-" is standard input or output.

/// Prints the report of each manifest.
ExitCode show(const std::vector<std::string>& files);

/// Loads a manifest and writes it back to \p output.
ExitCode fmt(const std::string& file, const std::string& output);

#endif
