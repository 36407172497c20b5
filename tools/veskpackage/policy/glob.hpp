// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_POLICY_GLOB_HPP
#define TOOLS_VESKPACKAGE_POLICY_GLOB_HPP

#include <string>
#include <string_view>
#include <vector>

namespace tool
{

/// The names in a relative path, without empty ones and ".".
std::vector<std::string_view> namesIn(std::string_view path);

/// A pattern of relative paths. "*" stands for any characters but "/", "?" for one of those, and
/// "**" as a whole name for any number of folders. Everything else stands for itself.
class Glob
{
public:
  explicit Glob(const std::string& pattern);

  /// Whether it is the pattern of a path, or of a folder on the way there. Takes time in proportion
  /// to the length of the pattern times that of the path.
  bool matches(const std::vector<std::string_view>& path) const;

private:
  std::vector<std::string> names;
};

} // namespace tool

#endif
