// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_REPORTING_HPP
#define PACKAGE_REPORTING_HPP

#include <map>
#include <ostream>
#include <string>

namespace vesk
{

/// Prints a line for each language and its text.
inline void printTexts(std::ostream& out, const std::map<std::string, std::string>& texts)
{
  for (const auto& [lang, text] : texts)
  {
    out << "  " << lang << " -> " << text << std::endl;
  }
}

} // namespace vesk

#endif
