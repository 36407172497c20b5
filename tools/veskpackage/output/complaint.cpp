// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"

namespace tool
{

void complain(std::ostream& complaints, const std::string& file, const std::string& message)
{
  complaints << file << ": error: " << message << '\n';
}

} // namespace tool
