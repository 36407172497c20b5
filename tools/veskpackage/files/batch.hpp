// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_BATCH_HPP
#define TOOLS_VESKPACKAGE_FILES_BATCH_HPP

#include "exitcode.hpp"

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace tool
{

/// Which files a verb works on. A folder stands for the manifests in it.
struct Inputs
{
  std::vector<std::string> files;
  std::string filesFrom; ///< a file with a path a line, or "-" for standard input; may be empty
  bool hasNulls = false; ///< whether that list has a NUL behind each path instead of a line break
  int jobs = 1;          ///< how many files are worked on at once

  /// Whether there can be more than one, so that results are printed a line each.
  bool areMany() const;
};

/// Works on one file. What it prints reaches the standard streams together, in the order of files.
using Work =
    std::function<ExitCode(const std::string& file, std::ostream& out, std::ostream& complaints)>;

/// A file that is to be worked on.
struct InputFile
{
  std::string path;
  /// Which of Inputs::files is the folder that it was found in, counted from 1; 0 where it was named.
  std::size_t folder = 0;
};

/// What is left to be done about a file after that on all files before it, never on two at once.
using Rest = std::function<ExitCode(std::ostream& out, std::ostream& complaints)>;
/// Works on one file up to where the order of files counts.
using WorkWithRest = std::function<Rest(const InputFile& file)>;

/// Whether a file or folder that is found in a folder is left out; of a file that is named itself the
/// answer does not count. Asked of each in turn, by one thread at a time, before it is worked on. A
/// std::runtime_error from it ends the work once what comes before is done, and is thrown on.
using LeftOut = std::function<bool(const std::string& path)>;

/// Works on all files and gives the highest exit code. Between the results of two files prints
/// \p separator. While it takes long, a terminal is shown how far it is. Memory does not grow with
/// the number of files. Throws UsageFault when there is no file to work on, and std::runtime_error when
/// the list of files cannot be read.
ExitCode forEachFile(const Inputs& inputs, const Work& work, const std::string& separator = {});
/// The same of work in two parts: the first is done by several threads, the rest in the order of files.
ExitCode forEachFileInOrder(const Inputs& inputs, const WorkWithRest& work,
                            const LeftOut& isLeftOut = {});

} // namespace tool

#endif
