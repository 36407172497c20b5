// SPDX-License-Identifier: Apache-2.0
#include "lsp/packagefolder.hpp"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tool::lsp
{

namespace fs = std::filesystem;

namespace
{
constexpr int mostEntries = 1000;

/// Whether \p path leads from a folder to something in it, as far as its text says.
bool isBelow(std::string_view path)
{
  const fs::path parts(path);
  return !path.empty() && path.find('\0') == std::string_view::npos && parts.is_relative() &&
         std::none_of(parts.begin(), parts.end(),
                      [](const fs::path& part) { return part == ".."; });
}

/// Whether what is at an absolute path lies in the folder, once links have been followed.
bool liesIn(const fs::path& folder, const fs::path& path)
{
  std::error_code error;
  const fs::path from = fs::canonical(folder, error);
  const fs::path to = error ? fs::path() : fs::canonical(path, error);
  return !error &&
         std::mismatch(from.begin(), from.end(), to.begin(), to.end()).first == from.end();
}

/// Calls \p visit with each entry of a folder, of some thousands at most.
template <typename Visit>
void visitEntries(const fs::path& folder, const Visit& visit)
{
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (int count = 0; !error && count < mostEntries && entry != fs::directory_iterator(); ++count)
  {
    visit(*entry);
    entry.increment(error);
  }
}
} // namespace

std::string fileIn(const std::string& folder, std::string_view path, bool canLackExtension)
{
  if (folder.empty() || !isBelow(path))
  {
    return {};
  }
  const fs::path whole = fs::path(folder) / path;
  if (liesIn(folder, whole))
  {
    return whole.string();
  }
  fs::path found;
  if (canLackExtension)
  {
    visitEntries(whole.parent_path(),
                 [&](const fs::directory_entry& entry)
                 {
                   const bool isMeant = entry.path().stem() == whole.filename() &&
                                        (found.empty() || entry.path() < found);
                   found = isMeant ? entry.path() : found;
                 });
  }
  return !found.empty() && liesIn(folder, found) ? found.string() : std::string();
}

std::vector<std::string> namesIn(const std::string& folder, std::string_view path)
{
  std::vector<std::string> names;
  const fs::path whole = fs::path(folder) / path;
  if (folder.empty() || !(path.empty() || isBelow(path)) || !liesIn(folder, whole))
  {
    return names;
  }
  visitEntries(whole,
               [&names](const fs::directory_entry& entry)
               {
                 std::error_code error;
                 std::string name = entry.path().filename().string();
                 if (name.front() != '.')
                 {
                   names.push_back(std::move(name) + (entry.is_directory(error) ? "/" : ""));
                 }
               });
  std::sort(names.begin(), names.end());
  return names;
}

} // namespace tool::lsp
