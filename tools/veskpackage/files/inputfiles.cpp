// SPDX-License-Identifier: Apache-2.0
#include "files/inputfiles.hpp"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <utility>

namespace tool
{

namespace filesystem = std::filesystem;

bool isFolder(const std::string& path)
{
  std::error_code unknown;
  return filesystem::is_directory(path, unknown);
}

namespace
{
/// Whether a file in a folder is a manifest: by its name, or by the name of its root. What cannot be
/// read counts, too, since it might be one.
bool isManifest(const filesystem::path& file)
{
  if (file.filename() == "manifest.xml")
  {
    return true;
  }
  if (file.extension() != ".xml")
  {
    return false;
  }
  QFile content(QString::fromStdString(file.string()));
  if (!content.open(QIODevice::ReadOnly))
  {
    return true;
  }
  QXmlStreamReader reader(content.read(65536)); // the root is near the beginning
  return !reader.readNextStartElement() || reader.name() == QLatin1String("package");
}
} // namespace

InputFiles::InputFiles(const Inputs& inputs, LeftOut leftOut)
    : named(inputs), isLeftOut(std::move(leftOut))
{
  if (!named.filesFrom.empty() && named.filesFrom != "-")
  {
    list.open(named.filesFrom);
    if (!list || isFolder(named.filesFrom))
    {
      throw std::runtime_error("cannot read the list of files " + named.filesFrom);
    }
  }
}

std::optional<InputFile> InputFiles::next()
{
  std::optional<InputFile> file = nextOfAll();
  hasGivenNone = hasGivenNone && !file;
  return file;
}

std::string InputFiles::searched() const
{
  constexpr std::size_t most = 3;
  std::string places;
  const auto add = [&places](const std::string& place)
  { places.append(places.empty() ? "" : ", ").append(place); };
  for (std::size_t i = 0; i < std::min(named.files.size(), most); ++i)
  {
    add(named.files[i]);
  }
  if (named.files.size() > most)
  {
    add(std::to_string(named.files.size() - most) + " more");
  }
  if (!named.filesFrom.empty())
  {
    add(named.filesFrom == "-" ? "the list <stdin>" : "the list " + named.filesFrom);
  }
  if (named.files.empty())
  {
    return "there is no file in " + places;
  }
  return "no manifest in " + places +
         ": looked for manifest.xml, and for .xml files whose root is package" +
         (hasLeftOut ? "; what the policy excludes is left out" : "");
}

std::optional<InputFile> InputFiles::nextOfAll()
{
  if (std::optional<std::string> file = nextInFolders())
  {
    return InputFile{std::move(*file), argument};
  }
  while (std::optional<std::string> file = nextNamed())
  {
    if (!enter(*file))
    {
      if (isLeftOut)
      {
        isLeftOut(*file);
      }
      return InputFile{std::move(*file)};
    }
    if (std::optional<std::string> inFolder = nextInFolders())
    {
      return InputFile{std::move(*inFolder), argument};
    }
  }
  return std::nullopt;
}

std::optional<std::string> InputFiles::nextNamed()
{
  if (given < named.files.size())
  {
    argument = given + 1;
    return named.files[given++];
  }
  argument = 0;
  std::istream& lines = named.filesFrom == "-" ? std::cin : list;
  std::string path;
  while (!named.filesFrom.empty() && std::getline(lines, path, named.hasNulls ? '\0' : '\n'))
  {
    if (path.find('\0') != std::string::npos)
    {
      throw std::runtime_error("the list of files " + named.filesFrom +
                               " has NULs between the paths; --null reads it so");
    }
    if (!named.hasNulls && !path.empty() && path.back() == '\r') // of a list from another system
    {
      path.pop_back();
    }
    if (!path.empty())
    {
      return path;
    }
  }
  return std::nullopt;
}

std::optional<std::string> InputFiles::nextInFolders()
{
  while (!folders.empty())
  {
    if (folders.back().empty())
    {
      folders.pop_back();
      continue;
    }
    const std::string path = std::move(folders.back().back());
    folders.back().pop_back();
    if (isLeftOut && isLeftOut(path))
    {
      hasLeftOut = true;
      continue;
    }
    if (!enter(path) && (isFolder(path) || isManifest(path)))
    {
      return path;
    }
  }
  return std::nullopt;
}

bool InputFiles::enter(const std::string& path)
{
  std::error_code error; // set for a file, and for a folder without the right to read it
  filesystem::directory_iterator entry(path, error);
  if (error)
  {
    return false;
  }
  std::vector<std::string> entries;
  for (; !error && entry != filesystem::directory_iterator(); entry.increment(error))
  {
    std::error_code unknown;
    const bool isHidden = entry->path().filename().string().front() == '.';
    const bool isLinkedFolder = entry->is_symlink(unknown) && entry->is_directory(unknown);
    const bool isToRead = entry->is_directory(unknown) || entry->is_regular_file(unknown);
    if (isToRead && !isHidden && !isLinkedFolder) // a link could lead in circles
    {
      entries.push_back(entry->path().string());
    }
  }
  std::sort(entries.rbegin(), entries.rend());
  folders.push_back(std::move(entries));
  return true;
}

} // namespace tool
