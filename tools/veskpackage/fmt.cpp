// SPDX-License-Identifier: Apache-2.0
#include "manifestfile.hpp"
#include "verbs.hpp"

ExitCode fmt(const std::string& file, const std::string& output)
{
  vesk::PackageInfo package;
  return load(package, file) && save(package, output) ? Done : FileTrouble;
}
