// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_COMPLAINT_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_COMPLAINT_HPP

#include <source/lines.hpp>

#include <ostream>
#include <string>

namespace tool
{

/// Prints a complaint about a file as compilers do.
/// \{
void complain(std::ostream& complaints, const std::string& file, const std::string& message);
void complain(std::ostream& complaints, const std::string& file, const vesk::source::Place& place,
              const std::string& message);
/// \}

} // namespace tool

#endif
