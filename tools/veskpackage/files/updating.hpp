// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_UPDATING_HPP
#define TOOLS_VESKPACKAGE_FILES_UPDATING_HPP

#include "exitcode.hpp"

#include <chrono>
#include <functional>
#include <optional>
#include <ostream>
#include <string>

namespace tool
{

/// Makes a file's new content of its old; none where it is to stay as it is.
using Update = std::function<std::optional<std::string>(const std::string& bytes)>;

/// Reads \p file, and writes over it what \p work makes of it. All that comes between reading and
/// writing has the file for itself: other updates of it wait, up to \p patience. At every moment there is the whole old file or the whole new one, with the
/// same mode; a symbolic link stays one.
///
/// When the file cannot be read or written, is too large or no plain file, stays locked, or has been
/// changed meanwhile by a program that does not wait, nothing is written; says why, and gives
/// FileTrouble.
ExitCode updateFile(const std::string& file, std::ostream& complaints, const Update& work,
                    std::chrono::milliseconds patience = std::chrono::seconds(60));

} // namespace tool

#endif
