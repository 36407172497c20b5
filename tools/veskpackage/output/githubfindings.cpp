// SPDX-License-Identifier: Apache-2.0
#include "output/filelocation.hpp"
#include "output/findingwriter.hpp"

#include <string_view>

namespace tool
{

using vesk::check::Finding;
using vesk::check::Severity;

namespace
{
/// A text within a command, with codes for the characters that would end it.
std::string escaped(const std::string& text, std::string_view ends)
{
  std::string result;
  for (const char c : text)
  {
    if (ends.find(c) == std::string_view::npos)
    {
      result += c;
      continue;
    }
    result += c == '%' ? "%25" : c == '\r' ? "%0D" : c == '\n' ? "%0A" : c == ':' ? "%3A" : "%2C";
  }
  return result;
}

std::string inMessage(const std::string& text) { return escaped(text, "%\r\n"); }
std::string inProperty(const std::string& text) { return escaped(text, "%\r\n:,"); }

const char* commandFor(Severity severity)
{
  return severity == Severity::Error     ? "error"
         : severity == Severity::Warning ? "warning"
                                         : "notice";
}

class GithubWriter : public FindingWriter
{
public:
  explicit GithubWriter(const WriterOptions& options) : root(options.root) {}

  void write(const CheckedFile& file, std::ostream& out) override
  {
    for (const Finding& finding : file.findings)
    {
      out << "::" << commandFor(finding.severity)
          << " file=" << inProperty(pathBelow(root, file.name));
      if (hasPlace(finding))
      {
        out << ",line=" << finding.begin.line << ",endLine=" << finding.end.line;
      }
      if (hasPlace(finding) && finding.begin.line == finding.end.line) // else refused
      {
        out << ",col=" << finding.begin.column << ",endColumn=" << finding.end.column;
      }
      out << ",title=" << inProperty(finding.rule->tag) << "::" << inMessage(finding.message);
      if (!finding.place.empty())
      {
        out << " (" << inMessage(finding.place) << ')';
      }
      out << '\n';
    }
  }

private:
  const std::string root;
};
} // namespace

std::unique_ptr<FindingWriter> githubWriter(const WriterOptions& options)
{
  return std::make_unique<GithubWriter>(options);
}

} // namespace tool
