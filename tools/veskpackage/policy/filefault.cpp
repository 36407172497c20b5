// SPDX-License-Identifier: Apache-2.0
#include "policy/filefault.hpp"

namespace tool
{

FileFault::FileFault(const std::string& inFile, const std::string& what)
    : UsageFault(inFile + ": error: " + what), file(inFile), message(what)
{}

FileFault::FileFault(const std::string& inFile, vesk::source::Place where, const std::string& what)
    : UsageFault(inFile + ':' + std::to_string(where.line) + ':' + std::to_string(where.column) +
                 ": error: " + what),
      file(inFile), place(where), message(what)
{}

} // namespace tool
