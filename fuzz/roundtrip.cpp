// SPDX-License-Identifier: Apache-2.0
// A manifest that is loaded, written and loaded again.
#include "readback.hpp"
#include "support.hpp"

#include <edit/difference.hpp>

using vesk::AnyConstReference;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  vesk::PackageInfo first;
  if (!loadFile(first, textOf(data, size)))
  {
    takeLogged();
    return 0;
  }
  const vesk::PackageInfo second = writeAndRead(first);
  if (vesk::edit::differences(AnyConstReference(readBackOf(first)), AnyConstReference(first))
          .empty())
  {
    require(second.saveToManifestContent() == first.saveToManifestContent(),
            "nothing is lost, but another text is written");
  }
  // A text of blanks is read as an empty one, and that is lost by the next trip.
  const vesk::PackageInfo third = writeAndRead(second);
  require(writeAndRead(third).saveToManifestContent() == third.saveToManifestContent(),
          "more is lost by every trip");
  return 0;
}
