// SPDX-License-Identifier: Apache-2.0
// The variant reader: values of any shape, most of them like a package's.
#include "randomvalue.hpp"
#include "readback.hpp"
#include "support.hpp"

#include <package/interop/xovalue.hpp>

#include <sstream>

using vesk::AnyConstReference;
using XO::XOValue;

namespace
{
constexpr int mostChanges = 16;
constexpr int longestArray = 25;

XOValue variantOf(vesk::PackageInfo package)
{
  XOValue value;
  package.toXOValue(value);
  return value;
}

template <typename Descriptor>
XOValue variantOf(const Descriptor& descriptor)
{
  XOValue value;
  descriptor.toXOValue(value);
  return value;
}

XOValue variantOf(const vesk::DialogInfo& dialog) { return dialog.toXOValue(); }

/// A value within \p root, or that itself.
XOValue& somePlace(XOValue& root, FuzzedDataProvider& data)
{
  XOValue* place = &root;
  while (place->getSize() > 0 && data.ConsumeIntegralInRange(0, 7) != 0)
  {
    place = &(*place)[data.ConsumeIntegralInRange(0, place->getSize() - 1)];
  }
  return *place;
}

void change(XOValue& root, FuzzedDataProvider& data)
{
  XOValue& place = somePlace(root, data);
  switch (data.ConsumeIntegralInRange(0, 5))
  {
  case 0:
    place = XOValue();
    break;
  case 1:
    place = data.ConsumeBool();
    break;
  case 2:
    place = randomText(data);
    break;
  case 3:
    place = XOValue(somePlace(root, data));
    break;
  case 4: {
    const XOValue original = place;
    const int size = data.ConsumeIntegralInRange(0, longestArray);
    place.arraySetSize(size);
    for (int i = 0; i < size; ++i)
    {
      place[i] = original[i];
    }
    break;
  }
  default:
    place = std::move(somePlace(place, data));
  }
}

XOValue someValue(FuzzedDataProvider& data)
{
  vesk::PackageInfo package;
  fillRandomly(vesk::AnyReference(package), data);
  XOValue value = variantOf(package);
  for (int left = data.ConsumeIntegralInRange(0, mostChanges); left > 0; --left)
  {
    change(value, data);
  }
  return value;
}

/// Requires that a record does not change by conversion to a variant and back.
template <typename Record>
void requireRoundTrip(const Record& record, const std::string& what)
{
  const XOValue value = variantOf(record);
  const Record again(value);
  requireEqual(AnyConstReference(record), AnyConstReference(again), what);
  require(variantOf(again) == value, what + ": another variant");
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  FuzzedDataProvider provider(data, size);
  const XOValue value = someValue(provider);
  require(XOValue(value) == value, "a copy is not equal");

  requireRoundTrip(vesk::BehaviorInfo(value), "a behavior");
  requireRoundTrip(vesk::DialogInfo(value), "a dialog");
  requireRoundTrip(vesk::LanguageInfo(value), "a language");

  vesk::PackageInfo package(value);
  if (package.uuid().empty())
  {
    require(variantOf(package) == variantOf(vesk::PackageInfo()), "a package without uuid");
    package.setUuid("u");
  }
  requireRoundTrip(package, "a package");
  writeAndRead(package);
  fromXOValue(package, value); // adds to what there is, whatever the value's size
  std::ostringstream report;
  report << package << value;
  require(takeLogged().empty(), "something is logged");
  return 0;
}
