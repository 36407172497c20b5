// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_FINDINGWRITER_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_FINDINGWRITER_HPP

#include "output/checkedfile.hpp"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tool
{

/// Writes the findings of any number of files in one format. Keeps none of them.
class FindingWriter
{
public:
  FindingWriter() = default;
  FindingWriter(const FindingWriter&) = delete;
  FindingWriter& operator=(const FindingWriter&) = delete;
  virtual ~FindingWriter() = default;

  virtual void begin(std::ostream&) {}
  virtual void write(const CheckedFile& file, std::ostream& out) = 0;
  virtual void end(std::ostream&) {}
};

/// How findings are written; each format heeds what it has a use for.
struct WriterOptions
{
  bool isColored = false;
  bool hasExcerpts = false; ///< whether the text is shown in which something was found
  bool hasSummary = true;
  std::function<std::string()> moreSummary; ///< to come behind the numbers of findings; may be none
  std::string root; ///< the folder below which paths are relative; empty for the working directory
};

/// The formats that there are, the one for people first.
std::vector<std::string> findingFormats();
/// Throws std::out_of_range where there is no such format.
std::unique_ptr<FindingWriter> findingWriter(const std::string& format,
                                             const WriterOptions& options);

/// A line a finding, for people.
std::unique_ptr<FindingWriter> textWriter(const WriterOptions& options);
/// An object a line for each file.
std::unique_ptr<FindingWriter> jsonWriter(const WriterOptions& options);
/// The interchange format for results of static analysis, version 2.1.0.
std::unique_ptr<FindingWriter> sarifWriter(const WriterOptions& options);
/// Commands to a workflow, which become annotations of files.
std::unique_ptr<FindingWriter> githubWriter(const WriterOptions& options);
/// A report of tests, each of which is a file.
std::unique_ptr<FindingWriter> junitWriter(const WriterOptions& options);

} // namespace tool

#endif
