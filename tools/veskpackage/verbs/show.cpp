// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"
#include "verbs/verbs.hpp"

#include <edit/json.hpp>
#include <edit/membername.hpp>
#include <xovalue/xovalue.hpp>

namespace tool
{
namespace
{
void printManifest(Manifest& manifest, Format format, bool isOneOfMany, std::ostream& out)
{
  if (format == Format::Variant)
  {
    XO::XOValue value;
    manifest.fields.package.toXOValue(value);
    out << value << '\n';
  }
  else if (format == Format::Json)
  {
    std::vector<std::pair<std::string, vesk::AnyConstReference>> further;
    if (isOneOfMany)
    {
      further.emplace_back("file", manifest.name);
    }
    out << vesk::edit::toJson(vesk::AnyConstReference(manifest.fields), isOneOfMany ? -1 : 2,
                              vesk::edit::friendlyName, further)
        << '\n';
  }
  else
  {
    out << (isOneOfMany ? "== " + manifest.name + " ==\n" : "") << manifest.fields;
  }
}
} // namespace

ExitCode showManifests(const ShowOptions& options)
{
  return forEachManifest(
      options.inputs,
      [&options](Manifest& manifest, std::ostream& out, std::ostream&)
      {
        printManifest(manifest, options.format, options.inputs.areMany(), out);
        return Done;
      },
      options.format == Format::Text ? "\n" : "");
}

} // namespace tool
