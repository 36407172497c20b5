// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

using testing::ElementsAre;
using testing::Pair;
using vesk::PackageInfo;

TEST(Package, GivesTextsForExactlyTheirLanguage)
{
  const std::string* missing = nullptr;
  {
    PackageInfo package;
    package.setName("A", "en");
    package.setName("B", "en");
    package.setDescription("C", "en");
    EXPECT_THAT(package.names(), ElementsAre(Pair("en", "B")));
    EXPECT_EQ(package.description("en") + package.description("fr"), "C");
    missing = &package.name("fr");
    package.clearNames();
    EXPECT_TRUE(package.names().empty());
    EXPECT_EQ(package.descriptions().size(), 1U);
  }
  EXPECT_EQ(*missing, "");
}

TEST(Package, HoldsALanguageOnce)
{
  PackageInfo package;
  for (const char* language : {"en", "fr", "en", "EN"})
  {
    package.addSupportedLanguage(language);
    package.addDescriptionLanguage(language);
  }
  EXPECT_THAT(package.supportedLanguages(), ElementsAre("en", "fr", "EN"));
  EXPECT_EQ(package.descriptionLanguages(), package.supportedLanguages());
  package.removeSupportedLanguage(package.supportedLanguages().front());
  package.removeSupportedLanguage("de");
  package.removeDescriptionLanguage("fr");
  EXPECT_THAT(package.supportedLanguages(), ElementsAre("fr", "EN"));
  EXPECT_THAT(package.descriptionLanguages(), ElementsAre("en", "EN"));
  package.clearSupportedLanguages();
  EXPECT_EQ(package.supportedLanguages().size() + package.descriptionLanguages().size(), 2U);
  package.clearDescriptionLanguages();
  EXPECT_TRUE(package.descriptionLanguages().empty());
}

TEST(Package, AppendsToEveryListAndClearsIt)
{
  PackageInfo package;
  EXPECT_FALSE(package.hasBehavior());
  const auto sizes = [&package]
  {
    return std::list{package.services().size(),  package.robotRequirements().size(),
                     package.dialogs().size(),   package.mirelRequirements().size(),
                     package.behaviors().size(), package.executableFiles().size(),
                     package.languages().size()};
  };
  for (const std::size_t size : {1U, 2U})
  {
    package.addService({"start", "name", true});
    package.addExecutableFile("bin/a");
    package.addRobotRequirement({"model", "1", "2", "3", "4"});
    package.addMirelRequirement({"1", "2"});
    package.addBehavior({});
    package.addDialog({});
    package.addLanguage({});
    EXPECT_THAT(sizes(), testing::Each(size));
  }
  EXPECT_TRUE(package.hasBehavior());
  package.clearServices();
  package.clearRobotRequirements();
  package.clearMirelRequirements();
  package.clearBehaviors();
  package.clearDialogs();
  EXPECT_THAT(sizes(), ElementsAre(0, 0, 0, 0, 0, 2, 2));
}

TEST(Package, TrimsItselfAndItsBehaviors)
{
  PackageInfo package;
  package.setName("A", "en_US");
  package.setName("B", "fr_FR");
  package.setDescription("C", "fr_FR");
  package.addDescriptionLanguage("en");
  package.addSupportedLanguage("fr");
  package.addBehavior({});
  vesk::BehaviorInfo& behavior = package.behaviors().front();
  behavior.setName("D", "fr_FR");
  behavior.addTag("t", "fr_FR");
  behavior.addTag("t", "en_US");
  package.trimExtraInfo();
  EXPECT_THAT(package.names(), ElementsAre(Pair("en_US", "A")));
  EXPECT_TRUE(package.descriptions().empty() && behavior.names().empty());
  EXPECT_THAT(behavior.languagesToTags(), ElementsAre(Pair("fr_FR", ElementsAre("t"))));
  EXPECT_THAT(package.supportedLanguages(), ElementsAre("fr"));
  package.clearDescriptionLanguages();
  package.trimExtraInfo();
  EXPECT_TRUE(package.names().empty());
}
