// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_ARGUMENTS_HPP
#define TOOLS_VESKPACKAGE_FILES_ARGUMENTS_HPP

#include <string>
#include <vector>

namespace tool
{

/// What a verb is given: files, and behind them what it does with each.
struct Arguments
{
  std::vector<std::string> files;
  std::vector<std::string> others;
};

/// Divides FILE... FIELD...: files are those in front that are "-", exist, contain a "/" or end in
/// ".xml". (A field that is called like a file can be written in quotes.)
Arguments filesAndFields(const std::vector<std::string>& arguments);

/// Divides FILE... FIELD=VALUE...: files are those in front that have no "=", or start with "/",
/// "./" or "../".
Arguments filesAndAssignments(const std::vector<std::string>& arguments);

} // namespace tool

#endif
