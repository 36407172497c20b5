// SPDX-License-Identifier: Apache-2.0
// Mends of faults in manifests of this project and in random changes of them, with the faults that
// people make. Set FIXING_COUNT for more than a few of these.
#include "changedmanifests.hpp"

#include <check/fixing.hpp>

#include <fuzz/fix.hpp>
#include <iostream>

using vesk::check::fix;

namespace
{
std::vector<std::string> faults()
{
  return {" ",
          "x",
          "<Names><name lang='en_US'>a</name></Names>",
          "<names><name language='fr_FR'>b</name><title lang='de_DE'>c</title></names>",
          "<names><name lang='fr_FR '>b</name></names>",
          "<contents><behaviourContent path=' b'/></contents>",
          "<permissions><canstandup/><canStandUp/><canStandUp/></permissions>",
          "<services><service name='s' execStart='s' autorun='1'/></services>",
          "<services><service name='s' exec='s' autorun='True'/></services>",
          "<userRequestable>true</userRequestable>",
          "<nature> interactive</nature>",
          "<nature>solitry</nature>",
          "<supportedLanguage><language>en_US</language></supportedLanguage>",
          "<supportedLanguages><language>en</language><language>en</language></supportedLanguages>",
          " Version='2'",
          " lang='en_US'"};
}
} // namespace

TEST(Fixing, MendsAsFindingsSay)
{
  const char* const wanted = std::getenv("FIXING_COUNT");
  const int count = wanted != nullptr ? std::stoi(wanted) : 1000;
  std::size_t mends = 0;
  for (const std::string& manifest : manifests())
  {
    mends += requireMendsHold(manifest);
  }
  EXPECT_GT(mends, 20U);
  Changes changes(manifests(), faults());
  for (int i = 0; i < count; ++i)
  {
    mends += requireMendsHold(changes.next());
  }
  std::cout << mends << " mends\n";
}
