// SPDX-License-Identifier: Apache-2.0
#include "output/reports.hpp"

#include "output/complaint.hpp"

#include <iostream>
#include <sstream>
#include <utility>

namespace tool
{
namespace
{
/// What is printed to the stream that \p print gets.
template <typename Print>
std::string printed(const Print& print)
{
  std::ostringstream out;
  print(out);
  return out.str();
}
} // namespace

Reports::Reports(std::unique_ptr<FindingWriter> toStandardOutput)
    : printer(std::move(toStandardOutput))
{
  printer->begin(std::cout);
}

void Reports::add(std::unique_ptr<FindingWriter> writer, const std::string& path)
{
  ReportFile& file = files.emplace_back(ReportFile{path, std::move(writer), GrowingFile(path)});
  file.content.append(printed([&file](std::ostream& out) { file.writer->begin(out); }));
}

void Reports::write(const CheckedFile& file, std::ostream& out)
{
  printer->write(file, out);
  for (ReportFile& report : files)
  {
    report.content.append(
        printed([&](std::ostream& content) { report.writer->write(file, content); }));
  }
}

ExitCode Reports::end()
{
  if (!std::cout) // so that the work was broken off; main() reports that
  {
    return FileTrouble;
  }
  ExitCode code = Done;
  printer->end(std::cout);
  for (ReportFile& file : files)
  {
    file.content.append(printed([&file](std::ostream& out) { file.writer->end(out); }));
    const std::string trouble = file.content.finish();
    if (!trouble.empty())
    {
      complain(std::cerr, file.path, trouble);
      code = FileTrouble;
    }
  }
  return code;
}

} // namespace tool
