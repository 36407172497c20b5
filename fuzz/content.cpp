// SPDX-License-Identifier: Apache-2.0
// The string reader: any text, up to its first NUL.
#include "support.hpp"

#include <sstream>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const std::string text = textOf(data, size);
  std::optional<vesk::PackageInfo> package = readBothWays(
      [&](auto& logging) { return logging.loadFromManifestContent(text); },
      [&](auto& silent, auto& error) { return silent.readManifestText(text, error); }, text);
  if (package)
  {
    std::ostringstream report;
    report << *package;
    package->trimExtraInfo();
    require(package->installer() == "i" && package->path() == "p",
            "no part of a manifest was read");
  }
  return 0;
}
