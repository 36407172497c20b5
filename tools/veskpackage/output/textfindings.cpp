// SPDX-License-Identifier: Apache-2.0
#include "output/excerpt.hpp"
#include "output/finding.hpp"
#include "output/findingwriter.hpp"

namespace tool
{

using vesk::check::Finding;
using vesk::check::Severity;

namespace
{
std::string counted(std::size_t number, const std::string& what)
{
  return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
}

class TextWriter : public FindingWriter
{
public:
  explicit TextWriter(const WriterOptions& asked) : options(asked) {}

  void write(const CheckedFile& file, std::ostream& out) override
  {
    ++files;
    mended += file.mended;
    for (const Finding& finding : file.findings)
    {
      ++(finding.severity == Severity::Error     ? errors
         : finding.severity == Severity::Warning ? warnings
                                                 : hints);
      mends += finding.mend ? 1 : 0;
      printFinding(out, file.name, finding, options.isColored);
      if (options.hasExcerpts)
      {
        printExcerpt(out, file, finding, options.isColored);
      }
    }
  }

  void end(std::ostream& out) override
  {
    if (!options.hasSummary)
    {
      return;
    }
    out << counted(files, "file") << ": " << counted(errors, "error") << ", "
        << counted(warnings, "warning") << ", " << counted(hints, "hint");
    if (mends > 0)
    {
      out << "; " << mends << " of these can be mended with --fix";
    }
    if (mended > 0)
    {
      out << "; " << mended << " mended";
    }
    out << (options.moreSummary ? options.moreSummary() : "") << '\n';
  }

private:
  const WriterOptions options;
  std::size_t files = 0;
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t hints = 0;
  std::size_t mends = 0;
  std::size_t mended = 0;
};
} // namespace

std::unique_ptr<FindingWriter> textWriter(const WriterOptions& options)
{
  return std::make_unique<TextWriter>(options);
}

} // namespace tool
