// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_EXITCODE_HPP
#define TOOLS_VESKPACKAGE_EXITCODE_HPP

#include <array>

namespace tool
{

/// What the program tells its caller. Where several files are given, the highest code counts.
enum ExitCode : int
{
  Done = 0,
  NegativeResult = 1, ///< what was asked for is not so
  WrongUsage = 2,     ///< also of files that say how manifests are checked
  FileTrouble = 3     ///< a file is unreadable or malformed, or cannot be written
};

/// By code, for help and man pages.
inline constexpr std::array exitCodeMeanings{
    "done",
    "a negative result: findings that fail, a difference, a field that is not there, a refusal",
    "wrong usage, a faulty policy or baseline, or no manifest found",
    "a file is unreadable or malformed, or cannot be written"};

} // namespace tool

#endif
