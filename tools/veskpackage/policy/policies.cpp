// SPDX-License-Identifier: Apache-2.0
#include "policy/policies.hpp"

#include "output/filelocation.hpp"
#include "policy/absolutepath.hpp"
#include "policy/filefault.hpp"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tool
{

namespace filesystem = std::filesystem;

namespace
{
/// Folders that are remembered, so that memory does not grow with their number. Manifests come
/// folder by folder, so few are looked at again.
constexpr std::size_t mostFolders = 10000;
/// No file can be opened by a longer path.
constexpr std::size_t mostOfPath = 4096;

std::string folderOf(const std::string& path)
{
  const std::string folder = filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}
} // namespace

Policies::Policies(const std::optional<std::string>& fileForAll)
    : isFound(!fileForAll), otherwise{"/", std::make_shared<const Policy>()}
{
  if (fileForAll && !fileForAll->empty())
  {
    otherwise = {absolutePath(folderOf(*fileForAll)),
                 std::make_shared<const Policy>(readPolicy(*fileForAll))};
  }
}

std::shared_ptr<const Policy> Policies::policyOf(const std::string& manifest)
{
  return policyAt(folderOf(manifest)).policy;
}

bool Policies::excludes(const std::string& path)
{
  const Placed placed = policyAt(folderOf(path));
  if (placed.policy->excluded.empty())
  {
    return false;
  }
  const std::string below = pathBelow(placed.folder, absolutePath(path));
  if (below.front() == '/') // elsewhere, where a policy that was named counts
  {
    return false;
  }
  const std::vector<std::string_view> names = namesIn(below);
  return std::any_of(placed.policy->excluded.begin(), placed.policy->excluded.end(),
                     [&names](const Glob& pattern) { return pattern.matches(names); });
}

Policies::Placed Policies::policyAt(const std::string& folder)
{
  if (!isFound)
  {
    return otherwise;
  }
  const std::lock_guard<std::mutex> lock(mutex);
  return found(absolutePath(folder));
}

Policies::Placed Policies::found(const std::string& absoluteFolder)
{
  Placed placed = otherwise;
  std::vector<std::string> passed;
  filesystem::path folder = absoluteFolder;
  for (bool isSearched = absoluteFolder.size() <= mostOfPath; isSearched;
       isSearched = folder.has_relative_path(), folder = folder.parent_path())
  {
    const auto known = folders.find(folder.string());
    if (known != folders.end())
    {
      placed = known->second;
      break;
    }
    passed.push_back(folder.string());
    if (const std::optional<Placed> own = policyIn(folder.string()))
    {
      placed = *own;
      break;
    }
  }
  if (folders.size() >= mostFolders)
  {
    folders.clear();
  }
  for (std::string& path : passed)
  {
    folders.emplace(std::move(path), placed);
  }
  return placed;
}

std::optional<Policies::Placed> Policies::policyIn(const std::string& absoluteFolder)
{
  const std::string file = (filesystem::path(absoluteFolder) / policyFileName).string();
  const auto read = files.find(file);
  if (read != files.end())
  {
    return read->second;
  }
  std::error_code unknown; // of a folder that cannot be looked into: nothing is found there
  const filesystem::file_status status = filesystem::status(file, unknown);
  const bool isLink = filesystem::is_symlink(filesystem::symlink_status(file, unknown));
  if (!filesystem::exists(status) && !isLink)
  {
    return std::nullopt;
  }
  const std::string name = pathBelow("", file);
  if (!filesystem::is_regular_file(status)) // reading a pipe might never end
  {
    throw FileFault(name, isLink ? "is a link to no regular file" : "is no regular file");
  }
  const Placed placed{absoluteFolder, std::make_shared<const Policy>(readPolicy(name))};
  files.emplace(file, placed);
  return placed;
}

} // namespace tool
