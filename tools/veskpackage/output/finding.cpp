// SPDX-License-Identifier: Apache-2.0
#include "output/finding.hpp"

namespace tool
{

const char* colorOf(vesk::check::Severity severity)
{
  switch (severity)
  {
  case vesk::check::Severity::Error:
    return "\x1b[1;31m";
  case vesk::check::Severity::Warning:
    return "\x1b[1;35m";
  case vesk::check::Severity::Hint:
  case vesk::check::Severity::Off:
    break;
  }
  return "\x1b[1;36m";
}

void printFinding(std::ostream& out, const std::string& name, const vesk::check::Finding& finding,
                  bool isColored)
{
  out << name;
  if (finding.begin.line > 0)
  {
    out << ':' << finding.begin.line << ':' << finding.begin.column;
  }
  out << ": " << (isColored ? colorOf(finding.severity) : "")
      << vesk::check::nameOf(finding.severity) << (isColored ? "\x1b[0m" : "") << ": "
      << finding.message << " [" << finding.rule->tag << ']';
  if (!finding.place.empty())
  {
    out << ' ' << finding.place;
  }
  out << '\n';
}

} // namespace tool
