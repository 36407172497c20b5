// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"

namespace tool
{

void complain(std::ostream& complaints, const std::string& file, const std::string& message)
{
  complaints << file << ": error: " << message << '\n';
}

void complain(std::ostream& complaints, const std::string& file, const vesk::source::Place& place,
              const std::string& message)
{
  complain(complaints, file + ':' + std::to_string(place.line) + ':' + std::to_string(place.column),
           message);
}

} // namespace tool
