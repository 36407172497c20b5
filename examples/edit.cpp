// SPDX-License-Identifier: Apache-2.0
// Gives a package a new version and a French name, and writes its manifest to another file:
//
//   edit manifest.xml new-manifest.xml
#include <package/packageinfo.hpp>

#include <iostream>

int main(int argc, char** argv)
{
  if (argc != 3)
  {
    std::cerr << "usage: edit MANIFEST NEW-MANIFEST\n";
    return 2;
  }

  vesk::PackageInfo package;
  if (!package.loadFromManifestFile(argv[1]))
  {
    return 1; // the library's log, by default on standard error, has said why
  }

  // Texts come first, their language last.
  package.setVersion(package.version() + ".1");
  package.setName("Bonjour", "fr_FR");
  package.addDescriptionLanguage("fr_FR"); // does nothing if it is there already

  // What accessors give are references; behaviors can be changed in place.
  for (vesk::BehaviorInfo& behavior : package.behaviors())
  {
    behavior.addTag("edited", "en_US");
    behavior.setUserRequestable(true);
  }

  vesk::BehaviorInfo goodbye;
  goodbye.setPath("greeting/goodbye");
  goodbye.setNature(vesk::BehaviorInfo::natureInteractive());
  goodbye.setName("Say goodbye", "en_US");
  goodbye.addTriggerSentence("say goodbye", "en_US");
  goodbye.addPermission(vesk::BehaviorInfo::k_permCanStandUp);
  package.addBehavior(goodbye); // the package keeps a copy

  if (!package.saveToManifestFile(argv[2]))
  {
    std::cerr << "cannot write " << argv[2] << '\n';
    return 1;
  }
  std::cout << package; // a report for people
  return 0;
}
