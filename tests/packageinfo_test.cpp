// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vesk::PackageInfo;

TEST(Package, KeepsEveryText)
{
  struct Field
  {
    void (PackageInfo::*set)(const std::string&);
    const std::string& (PackageInfo::*get)() const;
  };
  const std::vector<Field> fields{{&PackageInfo::setUuid, &PackageInfo::uuid},
                                  {&PackageInfo::setVersion, &PackageInfo::version},
                                  {&PackageInfo::setAuthor, &PackageInfo::author},
                                  {&PackageInfo::setOrganization, &PackageInfo::organization},
                                  {&PackageInfo::setDate, &PackageInfo::date},
                                  {&PackageInfo::setTypeVersion, &PackageInfo::typeVersion},
                                  {&PackageInfo::setChannel, &PackageInfo::channel},
                                  {&PackageInfo::setInstaller, &PackageInfo::installer},
                                  {&PackageInfo::setPath, &PackageInfo::path}};
  PackageInfo package;
  for (std::size_t i = 0; i < fields.size(); ++i)
  {
    EXPECT_EQ((package.*fields[i].get)(), "");
    (package.*fields[i].set)(std::to_string(i));
  }
  const PackageInfo copy(package);
  for (std::size_t i = 0; i < fields.size(); ++i)
  {
    EXPECT_EQ((copy.*fields[i].get)(), std::to_string(i));
  }
}

TEST(Package, GivesTextsForExactlyTheirLanguage)
{
  const std::string* missing = nullptr;
  {
    PackageInfo package;
    package.setName("A", "en");
    package.setName("B", "en");
    package.setDescription("C", "en");
    EXPECT_THAT(package.names(), ElementsAre(Pair("en", "B")));
    EXPECT_EQ(package.description("en"), "C");
    EXPECT_EQ(package.description("fr"), "");
    missing = &package.name("fr");
    package.clearNames();
    EXPECT_THAT(package.names(), IsEmpty());
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
  EXPECT_THAT(package.descriptionLanguages(), ElementsAre("en", "fr", "EN"));
  package.removeSupportedLanguage(package.supportedLanguages().front());
  package.removeSupportedLanguage("de");
  package.removeDescriptionLanguage("fr");
  EXPECT_THAT(package.supportedLanguages(), ElementsAre("fr", "EN"));
  EXPECT_THAT(package.descriptionLanguages(), ElementsAre("en", "EN"));
  package.clearSupportedLanguages();
  EXPECT_THAT(package.supportedLanguages(), IsEmpty());
  EXPECT_EQ(package.descriptionLanguages().size(), 2U);
  package.clearDescriptionLanguages();
  EXPECT_THAT(package.descriptionLanguages(), IsEmpty());
}

TEST(Package, AppendsToEveryListAndClearsIt)
{
  PackageInfo package;
  EXPECT_FALSE(package.hasBehavior());
  for (int i = 0; i < 2; ++i)
  {
    package.addService({"start", "name", true});
    package.addExecutableFile("bin/a");
    package.addRobotRequirement({"model", "1", "2", "3", "4"});
    package.addMirelRequirement({"1", "2"});
    package.addBehavior({});
    package.addDialog({});
    package.addLanguage({});
  }
  EXPECT_TRUE(package.hasBehavior());
  EXPECT_EQ(package.services().size(), 2U);
  EXPECT_THAT(package.executableFiles(), ElementsAre("bin/a", "bin/a"));
  EXPECT_EQ(package.robotRequirements().back().maxBodyVersion, "4");
  EXPECT_EQ(package.mirelRequirements().back().maxVersion, "2");
  EXPECT_EQ(package.dialogs().size(), 2U);
  EXPECT_EQ(package.languages().size(), 2U);
  package.clearServices();
  package.clearRobotRequirements();
  package.clearMirelRequirements();
  package.clearBehaviors();
  package.clearDialogs();
  EXPECT_TRUE(package.services().empty() && package.robotRequirements().empty() &&
              package.mirelRequirements().empty() && package.behaviors().empty() &&
              package.dialogs().empty());
  EXPECT_EQ(package.executableFiles().size(), 2U);
  EXPECT_EQ(package.languages().size(), 2U);
}

TEST(Package, TrimsItselfAndItsBehaviors)
{
  PackageInfo package;
  package.setName("A", "en_US");
  package.setName("B", "fr_FR");
  package.setDescription("C", "fr_FR");
  package.addDescriptionLanguage("en");
  package.addSupportedLanguage("fr");
  vesk::BehaviorInfo behavior;
  behavior.setName("D", "fr_FR");
  behavior.addTag("t", "fr_FR");
  behavior.addTag("t", "en_US");
  package.addBehavior(behavior);
  package.trimExtraInfo();
  EXPECT_THAT(package.names(), ElementsAre(Pair("en_US", "A")));
  EXPECT_THAT(package.descriptions(), IsEmpty());
  EXPECT_THAT(package.behaviors().front().names(), IsEmpty());
  EXPECT_THAT(package.behaviors().front().languagesToTags(),
              ElementsAre(Pair("fr_FR", ElementsAre("t"))));
  EXPECT_THAT(package.supportedLanguages(), ElementsAre("fr"));
  package.clearDescriptionLanguages();
  package.trimExtraInfo();
  EXPECT_THAT(package.names(), IsEmpty());
}

TEST(Package, CopiesShareNothingAndMovesKeepAll)
{
  PackageInfo source;
  source.setUuid("u");
  source.addBehavior({});
  PackageInfo copy(source);
  copy.behaviors().front().setPath("changed");
  EXPECT_EQ(source.behaviors().front().path(), "");

  PackageInfo target;
  target.addService({});
  const std::string& uuid = target.uuid();
  PackageInfo returned = (target = copy);
  EXPECT_EQ(uuid, "u"); // the record stays, with the references into it
  EXPECT_THAT(target.services(), IsEmpty());
  returned.behaviors().clear();
  EXPECT_EQ(target.behaviors().front().path(), "changed");
  target = *&target;
  EXPECT_EQ(target.behaviors().size(), 1U);

  static_assert(std::is_nothrow_move_constructible_v<PackageInfo>);
  PackageInfo moved(std::move(target));
  EXPECT_EQ(moved.behaviors().front().path(), "changed");
  target = source; // NOLINT(bugprone-use-after-move): assigning is allowed
  EXPECT_EQ(target.uuid(), "u");
}
