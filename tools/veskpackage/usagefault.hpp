// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_USAGEFAULT_HPP
#define TOOLS_VESKPACKAGE_USAGEFAULT_HPP

#include <stdexcept>

namespace tool
{

/// What the run is to go by is wrong, not a manifest. Ends the run with WrongUsage; the text is
/// printed as it is.
class UsageFault : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

} // namespace tool

#endif
