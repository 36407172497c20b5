// SPDX-License-Identifier: Apache-2.0
#include "output/filelocation.hpp"

#include <filesystem>
#include <string_view>

namespace tool
{

namespace filesystem = std::filesystem;

std::string pathBelow(const std::string& folder, const std::string& file)
{
  const filesystem::path root = filesystem::absolute(folder.empty() ? "." : folder);
  const filesystem::path path = filesystem::absolute(file).lexically_normal();
  const filesystem::path below = path.lexically_relative(root.lexically_normal());
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
