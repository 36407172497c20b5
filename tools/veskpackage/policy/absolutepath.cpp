// SPDX-License-Identifier: Apache-2.0
#include "policy/absolutepath.hpp"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>

namespace tool
{

namespace filesystem = std::filesystem;

std::string absolutePath(const std::string& path)
{
  std::error_code unknown; // of a working directory that is gone, and of a folder that is not there
  const filesystem::path whole = filesystem::absolute(path, unknown);
  if (unknown)
  {
    return path;
  }
  const auto lastUp = std::find(std::make_reverse_iterator(whole.end()),
                                std::make_reverse_iterator(whole.begin()), "..");
  filesystem::path start;
  std::for_each(whole.begin(), lastUp.base(), [&start](const auto& name) { start /= name; });
  filesystem::path resolved = start.empty() ? start : filesystem::canonical(start, unknown);
  resolved = unknown ? start : resolved;
  std::for_each(lastUp.base(), whole.end(), [&resolved](const auto& name) { resolved /= name; });
  resolved = resolved.lexically_normal();
  return (resolved.has_filename() ? resolved : resolved.parent_path()).string();
}

} // namespace tool
