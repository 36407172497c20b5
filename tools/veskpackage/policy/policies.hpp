// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_POLICY_POLICIES_HPP
#define TOOLS_VESKPACKAGE_POLICY_POLICIES_HPP

#include "policy/policyfile.hpp"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

namespace tool
{

/// Finds the policy of each manifest: the file veskpackage.toml in its folder, or in the nearest
/// above. Links are not followed for that. Each file is read once, and each folder looked at once.
/// May be used by several threads. Faulty files throw FileFault.
class Policies
{
public:
  /// With \p fileForAll, that one holds for all manifests, and is read at once; when that is empty, no
  /// file does.
  explicit Policies(const std::optional<std::string>& fileForAll = std::nullopt);

  /// The policy of a manifest, or of what is read from standard input ("-") in the working folder.
  std::shared_ptr<const Policy> policyOf(const std::string& manifest);

  /// Whether the policy of the folder in which a file or folder lies excludes that.
  bool excludes(const std::string& path);

private:
  /// A policy, and the folder to which its patterns are relative.
  struct Placed
  {
    std::string folder;
    std::shared_ptr<const Policy> policy;
  };

  Placed policyAt(const std::string& folder);
  Placed found(const std::string& absoluteFolder);
  std::optional<Placed> policyIn(const std::string& absoluteFolder);

  std::mutex mutex; // of the two
  std::unordered_map<std::string, Placed> folders;
  std::map<std::string, Placed> files;
  const bool isFound; ///< next to and above the manifests
  Placed otherwise;
};

} // namespace tool

#endif
