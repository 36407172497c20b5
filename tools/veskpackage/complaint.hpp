// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_COMPLAINT_HPP
#define TOOLS_COMPLAINT_HPP

#include <ostream>
#include <string>

/// Prints a complaint about a file as compilers do.
void complain(std::ostream& complaints, const std::string& file, const std::string& message);

#endif
