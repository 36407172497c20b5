// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"
#include "verbs/verbs.hpp"

#include <edit/json.hpp>
#include <package/manifest2/packageinfo2.hpp>
#include <xovalue/xovalue.hpp>

namespace tool
{
namespace
{
/// \p sections hold the web content, which a package does not keep.
void printManifest(Manifest& manifest, vesk::PackageInfo2& sections, Format format,
                   bool isOneOfMany, std::ostream& out)
{
  if (format == Format::Variant)
  {
    XO::XOValue value;
    manifest.package.toXOValue(value);
    out << value << '\n';
    return;
  }
  const vesk::AnyValue& web = sections.contents()["web"]; // without a value where there is none
  if (format == Format::Json)
  {
    std::vector<std::pair<std::string, vesk::AnyConstReference>> further{{"web", web}};
    if (isOneOfMany)
    {
      further.emplace_back("file", manifest.name);
    }
    out << vesk::edit::toJson(vesk::AnyConstReference(manifest.package), isOneOfMany ? -1 : 2,
                              further)
        << '\n';
    return;
  }
  out << manifest.package;
  if (web.isValid())
  {
    out << "Web content\n***********\nPath: " << web.as<vesk::WebInfo>().path << '\n';
  }
}
} // namespace

ExitCode showManifests(const ShowOptions& options)
{
  return forEachFile(
      options.inputs,
      [&options](const std::string& file, std::ostream& out, std::ostream& complaints)
      {
        vesk::PackageInfo2 sections;
        std::optional<Manifest> manifest = load(file, complaints, &sections);
        if (!manifest)
        {
          return FileTrouble;
        }
        printManifest(*manifest, sections, options.format, options.inputs.areMany(), out);
        return Done;
      });
}

} // namespace tool
