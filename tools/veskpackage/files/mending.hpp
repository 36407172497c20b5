// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_MENDING_HPP
#define TOOLS_VESKPACKAGE_FILES_MENDING_HPP

#include "exitcode.hpp"

#include <check/manifestcheck.hpp>

#include <optional>
#include <ostream>
#include <string>

namespace tool
{

/// Mends what can be mended in the manifest in \p file, and writes over it; nobody else's change is
/// lost (see updateFile()). Adds to \p count how many faults were mended. When the file cannot be
/// written, says why.
ExitCode mendFile(const std::string& file, const vesk::check::Options& options, std::size_t& count,
                  std::ostream& complaints);

/// The bytes of a manifest with what can be mended in it mended; none where they cannot be edited, which
/// it says.
std::optional<std::string> mended(const std::string& name, const std::string& bytes,
                                  const vesk::check::Options& options, std::size_t& count,
                                  std::ostream& complaints);

} // namespace tool

#endif
