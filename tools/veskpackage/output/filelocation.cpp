// SPDX-License-Identifier: Apache-2.0
#include "output/filelocation.hpp"

#include <filesystem>
#include <string_view>
#include <system_error>

namespace tool
{

namespace filesystem = std::filesystem;

namespace
{
/// The path itself where the working directory is gone.
filesystem::path absolute(const std::string& path)
{
  std::error_code unknown;
  const filesystem::path whole = filesystem::absolute(path, unknown);
  return (unknown ? filesystem::path(path) : whole).lexically_normal();
}
} // namespace

std::string pathBelow(const std::string& folder, const std::string& file)
{
  const filesystem::path root = absolute(folder.empty() ? "." : folder);
  const filesystem::path path = absolute(file);
  const filesystem::path below = path.lexically_relative(root);
  return (below.empty() || *below.begin() == ".." ? path : below).string();
}

std::string uriOf(const std::string& path)
{
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string uri;
  for (const char c : path)
  {
    if (plain.find(c) != std::string_view::npos)
    {
      uri += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    uri += '%';
    uri += digits[byte / 16U];
    uri += digits[byte % 16U];
  }
  return uri;
}

} // namespace tool
