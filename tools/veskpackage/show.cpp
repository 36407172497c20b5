// SPDX-License-Identifier: Apache-2.0
#include "complaint.hpp"
#include "manifestfile.hpp"
#include "verbs.hpp"

#include <iostream>

ExitCode show(const std::vector<std::string>& files)
{
  ExitCode code = Done;
  for (const std::string& file : files)
  {
    vesk::PackageInfo package;
    if (load(package, file))
    {
      std::cout << package;
      if (!std::cout)
      {
        complain("<stdout>", "Could not write");
        return FileTrouble;
      }
    }
    else
    {
      code = FileTrouble;
    }
  }
  return code;
}
