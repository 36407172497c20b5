// SPDX-License-Identifier: Apache-2.0
#include <edit/manifest.hpp>
#include <edit/memberplace.hpp>

namespace vesk::edit
{

format::Place placeOfMember(const TypeInterface& record, const std::string& member)
{
  if (&record != typeOf<Manifest>())
  {
    return format::placeOf(record.name(), member);
  }
  return format::placeOf(member == "web" ? "::vesk::PackageInfo2" : typeOf<PackageInfo>()->name(),
                         member);
}

} // namespace vesk::edit
