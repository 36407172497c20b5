// SPDX-License-Identifier: Apache-2.0
#include "merged.hpp"
#include "support.hpp"

#include <package/packageinfo.hpp>

using testing::ElementsAre;
using vesk::PackageInfo;

TEST(Package, GivesReferencesThatOutliveWhatIsAssignedOrMissing)
{
  const std::string* missing = nullptr;
  {
    PackageInfo package;
    missing = &package.name("fr");
    const std::string& uuid = package.uuid();
    PackageInfo other;
    other.setUuid("u");
    EXPECT_FALSE(other.hasBehavior());
    other.addBehavior({});
    EXPECT_TRUE(other.hasBehavior());
    package = other;
    EXPECT_EQ(uuid, "u");
  }
  EXPECT_EQ(*missing, "");
}

TEST(Package, HoldsALanguageOnceUntilItIsRemoved)
{
  PackageInfo package;
  for (const char* language : {"en", "fr", "en", "EN"})
  {
    package.addSupportedLanguage(language);
    package.addDescriptionLanguage(language);
  }
  package.removeSupportedLanguage(package.supportedLanguages().front());
  package.removeSupportedLanguage("de");
  package.removeDescriptionLanguage("fr");
  EXPECT_THAT(package.supportedLanguages(), ElementsAre("fr", "EN"));
  EXPECT_THAT(package.descriptionLanguages(), ElementsAre("en", "EN"));
}

TEST(Package, ClearsOneFieldAtATime)
{
  using P = PackageInfo;
  const auto package = filled<PackageInfo>();
  for (const auto& [member, clear] :
       {std::pair("langToName", &P::clearNames), std::pair("services", &P::clearServices),
        std::pair("robotRequirements", &P::clearRobotRequirements),
        std::pair("mirelRequirements", &P::clearMirelRequirements),
        std::pair("behaviors", &P::clearBehaviors), std::pair("dialogs", &P::clearDialogs),
        std::pair("supportedLanguages", &P::clearSupportedLanguages),
        std::pair("descriptionLanguages", &P::clearDescriptionLanguages)})
  {
    PackageInfo cleared(package);
    (cleared.*clear)();
    Json expected = heldIn(package);
    expected[member].clear();
    EXPECT_EQ(heldIn(cleared), expected) << member;
  }
}
