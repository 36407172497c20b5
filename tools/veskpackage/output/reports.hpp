// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_REPORTS_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_REPORTS_HPP

#include "files/replacing.hpp"
#include "output/findingwriter.hpp"

#include <memory>
#include <string>
#include <vector>

namespace tool
{

/// The same findings in several formats: one on standard output, and others in files.
class Reports
{
public:
  /// Begins the one on standard output.
  explicit Reports(std::unique_ptr<FindingWriter> toStandardOutput);
  /// Begins one in a file. That is there when all is done, as a whole or not at all.
  void add(std::unique_ptr<FindingWriter> writer, const std::string& path);

  /// \p out leads to standard output.
  void write(const CheckedFile& file, std::ostream& out);
  /// Ends all. Says which files cannot be written, which is FileTrouble.
  ExitCode end();

private:
  struct ReportFile
  {
    std::string path;
    std::unique_ptr<FindingWriter> writer;
    GrowingFile content;
  };

  std::unique_ptr<FindingWriter> printer;
  std::vector<ReportFile> files;
};

} // namespace tool

#endif
