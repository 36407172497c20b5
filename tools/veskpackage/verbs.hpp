// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VERBS_HPP
#define TOOLS_VERBS_HPP

#include "exitcode.hpp"

#include <string>
#include <vector>

/// Each verb of the program. Results go to standard output, complaints to standard error. A file
/// "-" is standard input or output.

enum class ShowFormat
{
  Text,   ///< the report for people
  Json,   ///< all fields as JSON; of several manifests one object a line
  Variant ///< the variant form, as the robot's modules get it
};

/// Prints each manifest.
ExitCode show(const std::vector<std::string>& files, ShowFormat format);

/// Loads a manifest and writes it back to \p output.
ExitCode fmt(const std::string& file, const std::string& output);

#endif
