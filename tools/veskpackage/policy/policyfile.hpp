// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_POLICY_POLICYFILE_HPP
#define TOOLS_VESKPACKAGE_POLICY_POLICYFILE_HPP

#include "policy/glob.hpp"

#include <check/manifestcheck.hpp>

#include <map>
#include <string>
#include <vector>

namespace tool
{

/// How the manifests below a folder are checked. Made of nothing, as without a policy.
struct Policy
{
  std::map<std::string, vesk::check::Severity> severities; ///< by the tags of rules
  bool isStrict = false;                                   ///< warnings count as errors
  std::vector<Glob> excluded;                              ///< of paths from the folder of the file
};

/// What such a file is called.
inline constexpr const char* policyFileName = "veskpackage.toml";

/// Reads a policy. Throws FileFault when the file cannot be read, is larger than a mebibyte, no TOML,
/// or says anything that is not known.
Policy readPolicy(const std::string& file);
/// The same of a text; \p file is for messages only.
Policy parsePolicy(const std::string& text, const std::string& file);

} // namespace tool

#endif
