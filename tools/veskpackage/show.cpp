// SPDX-License-Identifier: Apache-2.0
#include "complaint.hpp"
#include "json.hpp"
#include "manifestfile.hpp"
#include "verbs.hpp"

#include <xovalue/xovalue.hpp>

#include <iostream>

namespace
{
struct Manifest
{
  vesk::PackageInfo package;
  vesk::PackageInfo2 sections;

  /// Nothing when there is none.
  vesk::AnyConstReference webContent() { return sections.contents()["web"]; }
};

void print(Manifest& manifest, ShowFormat format, bool onOneLine)
{
  switch (format)
  {
  case ShowFormat::Text:
    std::cout << manifest.package;
    if (manifest.webContent().isValid())
    {
      std::cout << "Web content\n***********\nPath: "
                << manifest.webContent().as<vesk::WebInfo>().path << '\n';
    }
    break;
  case ShowFormat::Json:
    std::cout << toJson(vesk::AnyConstReference(manifest.package), onOneLine ? -1 : 2,
                        {{"web", manifest.webContent()}})
              << '\n';
    break;
  case ShowFormat::Variant:
    XO::XOValue value;
    manifest.package.toXOValue(value);
    std::cout << value << '\n';
    break;
  }
}
} // namespace

ExitCode show(const std::vector<std::string>& files, ShowFormat format)
{
  ExitCode code = Done;
  for (const std::string& file : files)
  {
    Manifest manifest;
    if (load(manifest.package, file, format == ShowFormat::Variant ? nullptr : &manifest.sections))
    {
      print(manifest, format, files.size() > 1);
      if (!std::cout.flush())
      {
        complain("<stdout>", "Could not write");
        return FileTrouble;
      }
    }
    else
    {
      code = FileTrouble;
    }
  }
  return code;
}
