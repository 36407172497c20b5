// SPDX-License-Identifier: Apache-2.0
#include "policy/severities.hpp"

#include "output/jsonline.hpp"

#include <stdexcept>

namespace tool
{

using vesk::check::Severity;

Severity severityFor(const std::string& tag, const std::string& name)
{
  const vesk::check::Rule* const rule = vesk::check::findRule(tag);
  if (rule == nullptr)
  {
    throw std::invalid_argument("there is no rule " + jsonLine(tag) + "; --list-rules lists them");
  }
  if (rule->severity == Severity::Error)
  {
    throw std::invalid_argument(tag + " is an error at all times, since nothing is read then");
  }
  for (const Severity severity :
       {Severity::Off, Severity::Hint, Severity::Warning, Severity::Error})
  {
    if (name == nameOf(severity))
    {
      return severity;
    }
  }
  throw std::invalid_argument(tag + " can be off, hint, warning or error");
}

} // namespace tool
