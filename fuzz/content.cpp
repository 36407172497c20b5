// SPDX-License-Identifier: Apache-2.0
// The string reader: any text, up to its first NUL.
#include "support.hpp"

#include <sstream>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  vesk::PackageInfo package(examplePackage());
  const bool isLoaded = package.loadFromManifestContent(textOf(data, size));
  require(takeLogged().size() == (isLoaded ? 0 : 1), "what is refused, and only that, is logged");
  if (!isLoaded)
  {
    requireEqual(vesk::AnyConstReference(examplePackage()), vesk::AnyConstReference(package),
                 "a refused text has changed the package");
    return 0;
  }
  std::ostringstream report;
  report << package;
  package.trimExtraInfo();
  require(package.installer() == "i" && package.path() == "p", "no part of a manifest was read");
  return 0;
}
