// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_POLICY_FILEFAULT_HPP
#define TOOLS_VESKPACKAGE_POLICY_FILEFAULT_HPP

#include "usagefault.hpp"

#include <source/lines.hpp>

#include <string>

namespace tool
{

/// A file that says how manifests are checked is wrong.
class FileFault : public UsageFault
{
public:
  /// Without a place the fault is that of the whole file.
  /// \{
  FileFault(const std::string& inFile, const std::string& what);
  FileFault(const std::string& inFile, vesk::source::Place where, const std::string& what);
  /// \}

  const std::string file;
  const vesk::source::Place place{0, 0}; ///< 0 where it has none
  const std::string message;
};

} // namespace tool

#endif
