// SPDX-License-Identifier: Apache-2.0
#include "json.hpp"
#include "manifestfile.hpp"
#include "verbs.hpp"

#include <package/manifest2/loadmanifest.hpp>
#include <xovalue/xovalue.hpp>

#include <QDomDocument>

namespace
{
/// Where the web content is, which a package does not keep; no value when there is none.
vesk::AnyValue webContentOf(const Manifest& manifest)
{
  QDomDocument document; // within the library's limits, since it has been loaded
  document.setContent(manifest.bytes);
  return vesk::loadXmlDocument(document).contents()["web"];
}

void print(Manifest& manifest, Format format, bool isOneOfMany, std::ostream& out)
{
  if (format == Format::Variant)
  {
    XO::XOValue value;
    manifest.package.toXOValue(value);
    out << value << '\n';
    return;
  }
  const vesk::AnyValue web = webContentOf(manifest);
  if (format == Format::Json)
  {
    std::vector<std::pair<std::string, vesk::AnyConstReference>> further{{"web", web}};
    if (isOneOfMany)
    {
      further.emplace_back("file", manifest.name);
    }
    out << toJson(vesk::AnyConstReference(manifest.package), isOneOfMany ? -1 : 2, further) << '\n';
    return;
  }
  out << manifest.package;
  if (web.isValid())
  {
    out << "Web content\n***********\nPath: " << web.as<vesk::WebInfo>().path << '\n';
  }
}
} // namespace

ExitCode show(const ShowOptions& options)
{
  return forEachManifest(options.inputs,
                         [&options](Manifest& manifest, std::ostream& out, std::ostream&)
                         {
                           print(manifest, options.format, options.inputs.areMany(), out);
                           return Done;
                         });
}
