// SPDX-License-Identifier: Apache-2.0
#include <edit/manifest.hpp>
#include <edit/membername.hpp>
#include <format/format.hpp>

#include <map>
#include <utility>

namespace vesk::edit
{
namespace
{
/// The names of fields for people, by record and registered name.
std::map<std::pair<std::string, std::string>, std::string> friendlyNames()
{
  const std::string package = typeOf<PackageInfo>()->name();
  const std::string manifest = typeOf<Manifest>()->name();
  std::map<std::pair<std::string, std::string>, std::string> names;
  for (const format::Field& field : format::fields())
  {
    names[{field.record, field.registered}] = field.name;
    if (field.record == package)
    {
      names[{manifest, field.registered}] = field.name;
    }
  }
  return names;
}
} // namespace

std::string friendlyName(const TypeInterface& record, const std::string& memberName)
{
  static const auto names = friendlyNames();
  const auto known = names.find({record.name(), memberName});
  return known == names.end() ? memberName : known->second;
}

} // namespace vesk::edit
