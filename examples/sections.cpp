// SPDX-License-Identifier: Apache-2.0
// Lists the sections of a manifest, with where its web content is, and then the behaviors of the
// package:
//
//   sections manifest.xml
#include <package/manifest2/loadmanifest.hpp>
#include <package/packageinfo.hpp>

#include <iostream>
#include <stdexcept>
#include <utility>

int main(int argc, char** argv)
{
  if (argc != 2)
  {
    std::cerr << "usage: sections MANIFEST\n";
    return 2;
  }
  try
  {
    vesk::PackageInfo2 info = vesk::loadManifest(argv[1]);

    // A section is a value of any type, under the name of its element.
    for (const auto& [name, section] : info.sections)
    {
      std::cout << name << ": " << section.type()->name() << '\n';
    }

    // Constant access gives copies, which are empty where there is nothing.
    const vesk::WebInfo web = std::as_const(info).web();
    std::cout << "web content: " << (web.path.empty() ? "none" : web.path) << '\n';

    // Other access gives what is stored, to be changed in place.
    for (vesk::BehaviorInfo& behavior : info.behaviors())
    {
      behavior.setUserRequestable(true);
    }

    // A package has everything but the web content, and no description languages.
    const vesk::PackageInfo package(info);
    for (const vesk::BehaviorInfo& behavior : package.behaviors())
    {
      std::cout << "behavior: " << behavior.path() << '\n';
    }
  }
  catch (const std::runtime_error&)
  {
    return 1; // the library's log, by default on standard error, has said why
  }
  return 0;
}
