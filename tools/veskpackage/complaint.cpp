// SPDX-License-Identifier: Apache-2.0
#include "complaint.hpp"

#include <iostream>
#include <regex>

void complain(const std::string& file, const std::string& message)
{
  std::cerr << file << ": error: " << message << '\n';
}

void complainAsLogged(const std::string& file, const std::string& logged)
{
  static const std::regex place(" at line (\\d+), column (\\d+): ");
  const std::string prefix = "Syntax error in " + file;
  std::smatch parts;
  if (logged.compare(0, prefix.size(), prefix) == 0 &&
      std::regex_search(logged.begin() + static_cast<std::ptrdiff_t>(prefix.size()), logged.end(),
                        parts, place, std::regex_constants::match_continuous))
  {
    complain(file + ':' + parts.str(1) + ':' + parts.str(2), parts.suffix());
  }
  else
  {
    complain(file, logged);
  }
}
