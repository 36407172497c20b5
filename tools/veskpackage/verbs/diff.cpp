// SPDX-License-Identifier: Apache-2.0
#include "files/inputfiles.hpp"
#include "output/jsonline.hpp"
#include "verbs/verbs.hpp"

#include <edit/difference.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>

namespace tool
{

using vesk::edit::Difference;
using vesk::edit::toText;

namespace
{
/// Prints in what manifests differ, as text or as one JSON array.
class Printer
{
public:
  explicit Printer(Format toPrint) : format(toPrint) {}

  /// \p file is what to call the two manifests; empty where there are no others.
  void print(const std::string& file, const Difference& difference)
  {
    if (format == Format::Text)
    {
      std::cout << (file.empty() ? "" : file + ": ") << toText(difference.path()) << ": "
                << change(difference) << '\n';
      return;
    }
    start(file);
    std::cout << R"("field":)" << jsonLine(toText(difference.path())) << R"(,"before":)"
              << jsonLine(difference.before.value) << R"(,"after":)"
              << jsonLine(difference.after.value) << '}';
  }

  /// Says that only one folder has a manifest.
  void printLone(const std::string& file, const std::string& folder)
  {
    if (format == Format::Text)
    {
      std::cout << file << ": only in " << folder << '\n';
      return;
    }
    start(file);
    std::cout << R"("onlyIn":)" << jsonLine(folder) << '}';
  }

  void end() const
  {
    if (format == Format::Json)
    {
      std::cout << (isFirst ? "[]\n" : "]\n");
    }
  }

private:
  static std::string change(const Difference& difference)
  {
    if (!difference.after.value.isValid())
    {
      return "removed " + jsonLine(difference.before.value);
    }
    if (!difference.before.value.isValid())
    {
      return "added " + jsonLine(difference.after.value);
    }
    return jsonLine(difference.before.value) + " -> " + jsonLine(difference.after.value);
  }

  void start(const std::string& file)
  {
    std::cout << (isFirst ? "[{" : ",\n {");
    isFirst = false;
    if (!file.empty())
    {
      std::cout << R"("file":)" << jsonLine(file) << ',';
    }
  }

  const Format format;
  bool isFirst = true;
};

ExitCode compare(const std::string& leftFile, const std::string& rightFile, const std::string& name,
                 Printer& printer)
{
  const std::optional<Manifest> left = load(leftFile, std::cerr);
  const std::optional<Manifest> right = load(rightFile, std::cerr);
  if (!left || !right)
  {
    return FileTrouble;
  }
  const std::vector<Difference> all = vesk::edit::differences(
      vesk::AnyConstReference(left->fields), vesk::AnyConstReference(right->fields));
  for (const Difference& difference : all)
  {
    printer.print(name, difference);
  }
  return all.empty() ? Done : NegativeResult;
}

/// The paths, below a folder, of the manifests in it.
std::set<std::string> manifestsBelow(const std::string& folder)
{
  const Inputs inputs{{folder}, {}};
  InputFiles files(inputs);
  std::set<std::string> paths;
  while (const std::optional<InputFile> file = files.next())
  {
    paths.insert(std::filesystem::path(file->path).lexically_relative(folder).string());
  }
  return paths;
}

ExitCode reportLone(const std::string& folder, const std::string& path, Printer& printer)
{
  const std::string file = path == "." ? folder : folder + '/' + path;
  if (isFolder(file)) // without the right to read it, so that it was not searched
  {
    load(file, std::cerr);
    return FileTrouble;
  }
  printer.printLone(path, folder);
  return NegativeResult;
}

ExitCode compareFolders(const DiffOptions& options, Printer& printer)
{
  const std::set<std::string> left = manifestsBelow(options.left);
  const std::set<std::string> right = manifestsBelow(options.right);
  std::set<std::string> all = left;
  all.insert(right.begin(), right.end());
  ExitCode code = Done;
  for (const std::string& path : all)
  {
    const bool isLeft = left.count(path) != 0;
    const bool isRight = right.count(path) != 0;
    if (isLeft && isRight)
    {
      code = std::max(
          code, compare(options.left + '/' + path, options.right + '/' + path, path, printer));
    }
    else
    {
      code = std::max(code, reportLone(isLeft ? options.left : options.right, path, printer));
    }
  }
  return code;
}

} // namespace

ExitCode diffManifests(const DiffOptions& options)
{
  Printer printer(options.format);
  if (isFolder(options.left) && isFolder(options.right))
  {
    const ExitCode code = compareFolders(options, printer);
    printer.end();
    return code;
  }
  const ExitCode code = compare(options.left, options.right, {}, printer);
  if (code != FileTrouble)
  {
    printer.end();
  }
  return code;
}

} // namespace tool
