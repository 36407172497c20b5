// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/behaviorinfo.hpp>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vesk::BehaviorInfo;
using Texts = std::list<std::string>;

namespace
{
/// The operations of one family of lists.
struct Family
{
  const char* name;
  Texts (BehaviorInfo::*read)(const std::string&) const;
  void (BehaviorInfo::*add)(const std::string&, const std::string&);
  void (BehaviorInfo::*insert)(const std::string&, const std::string&, int);
  bool (BehaviorInfo::*update)(const std::string&, const std::string&, const std::string&);
  bool (BehaviorInfo::*remove)(const std::string&, const std::string&);
};

std::ostream& operator<<(std::ostream& out, const Family& family) { return out << family.name; }

const Family families[] = {
    {"tags", &BehaviorInfo::tags, &BehaviorInfo::addTag, &BehaviorInfo::insertTag,
     &BehaviorInfo::updateTag, &BehaviorInfo::removeTag},
    {"triggerSentences", &BehaviorInfo::triggerSentences, &BehaviorInfo::addTriggerSentence,
     &BehaviorInfo::insertTriggerSentence, &BehaviorInfo::updateTriggerSentence,
     &BehaviorInfo::removeTriggerSentence},
    {"loadingResponses", &BehaviorInfo::loadingResponses, &BehaviorInfo::addLoadingResponse,
     &BehaviorInfo::insertLoadingResponse, &BehaviorInfo::updateLoadingResponse,
     &BehaviorInfo::removeLoadingResponse},
    {"conditions", &BehaviorInfo::conditions, &BehaviorInfo::addCondition,
     &BehaviorInfo::insertCondition, &BehaviorInfo::updateCondition,
     &BehaviorInfo::removeCondition},
};

class BehaviorLists : public testing::TestWithParam<Family>
{
protected:
  Texts read(const std::string& key) const { return (behavior.*GetParam().read)(key); }
  void add(const std::string& text, const std::string& key)
  {
    (behavior.*GetParam().add)(text, key);
  }
  void insert(const std::string& text, const std::string& key, int index)
  {
    (behavior.*GetParam().insert)(text, key, index);
  }
  bool update(const std::string& from, const std::string& to, const std::string& key)
  {
    return (behavior.*GetParam().update)(from, to, key);
  }
  bool remove(const std::string& text, const std::string& key)
  {
    return (behavior.*GetParam().remove)(text, key);
  }

  BehaviorInfo behavior;
};
} // namespace

INSTANTIATE_TEST_SUITE_P(, BehaviorLists, testing::ValuesIn(families),
                         [](const auto& test) { return test.param.name; });

TEST_P(BehaviorLists, InsertBeforeAnIndexOrElseAtTheEnd)
{
  insert("x", "fr", 0);
  insert("y", "fr", 5);
  insert("z", "fr", -1);
  insert("w", "fr", 1);
  insert("v", "fr", 4);
  EXPECT_THAT(read("fr"), ElementsAre("x", "w", "y", "z", "v"));
}

TEST_P(BehaviorLists, UpdateAndRemoveOnlyTheFirstEqualText)
{
  add("a", "en");
  add("c", "en");
  add("a", "en");
  EXPECT_TRUE(update("a", "b", "en"));
  EXPECT_THAT(read("en"), ElementsAre("b", "c", "a"));
  EXPECT_FALSE(update("x", "b", "en"));
  EXPECT_FALSE(update("a", "b", "fr"));
  EXPECT_FALSE(remove("x", "en"));
  EXPECT_FALSE(remove("a", "fr"));
  add("c", "en");
  EXPECT_TRUE(remove("c", "en"));
  EXPECT_THAT(read("en"), ElementsAre("b", "a", "c"));
  EXPECT_THAT(printed(behavior), testing::Not(testing::HasSubstr("fr ->")));
}

TEST_P(BehaviorLists, AListThatBecomesEmptyKeepsItsKey)
{
  add("a", "en");
  EXPECT_TRUE(remove("a", "en"));
  EXPECT_THAT(printed(behavior), testing::HasSubstr("  en -> \n"));
}

TEST_P(BehaviorLists, ReadingAnUnknownKeyLeavesAnEntryButForTags)
{
  EXPECT_THAT(read("de"), IsEmpty());
  const bool isTags = std::string(GetParam().name) == "tags";
  EXPECT_EQ(printed(behavior).find("  de -> \n") == std::string::npos, isTags);
}

TEST(Behavior, GivesTextsForExactlyTheirLanguage)
{
  BehaviorInfo behavior;
  behavior.setName("A", "en");
  behavior.setName("B", "en");
  behavior.setDescription("C", "en");
  EXPECT_THAT(behavior.names(), ElementsAre(Pair("en", "B")));
  EXPECT_EQ(behavior.name("en_US"), "");
  EXPECT_EQ(behavior.description("it"), "");
  EXPECT_THAT(behavior.descriptions(), ElementsAre(Pair("en", "C")));
}

TEST(Behavior, ClaimsSupportedPermissionsOnce)
{
  EXPECT_THAT(BehaviorInfo::supportedPermissions(),
              ElementsAre("canRunInSleep", "canRunOnPod", "canStandUp", "canSitDown"));
  BehaviorInfo behavior;
  EXPECT_TRUE(behavior.addPermission("canSitDown"));
  EXPECT_TRUE(behavior.addPermission("canRunOnPod"));
  EXPECT_FALSE(behavior.addPermission("canRunOnPod"));
  EXPECT_FALSE(behavior.addPermission("canFly"));
  EXPECT_THAT(behavior.permissions(), ElementsAre("canSitDown", "canRunOnPod"));
  EXPECT_TRUE(behavior.hasPermission("canSitDown"));
  EXPECT_TRUE(behavior.removePermission("canSitDown"));
  EXPECT_FALSE(behavior.removePermission("canSitDown"));
  EXPECT_FALSE(behavior.hasPermission("canSitDown"));
}

TEST(Behavior, TrimsTextsByDescriptionLanguagesAndListsBySupportedOnes)
{
  BehaviorInfo behavior;
  for (const char* lang : {"", "en", "en_GB", "fr", "fr_FR"})
  {
    behavior.setName("name", lang);
    behavior.setDescription("description", lang);
    behavior.addTag("tag", lang);
    behavior.addTriggerSentence("sentence", lang);
    behavior.addLoadingResponse("response", lang);
    behavior.addCondition("condition", lang);
  }
  behavior.trimExtraInfo({"en"}, {"fr_FR"});
  EXPECT_THAT(behavior.names(), ElementsAre(Pair("en", "name"), Pair("en_GB", "name")));
  EXPECT_EQ(behavior.descriptions().size(), 2U);
  EXPECT_THAT(behavior.languagesToTags(), ElementsAre(Pair("fr_FR", ElementsAre("tag"))));
  EXPECT_EQ(behavior.languagesToTriggerSentences().size(), 1U);
  EXPECT_EQ(behavior.languagesToLoadingResponses().size(), 1U);
  EXPECT_THAT(behavior.conditions("fr"), ElementsAre("condition"));
  behavior.trimExtraInfo({""}, {});
  EXPECT_EQ(behavior.names().size(), 2U);
  EXPECT_THAT(behavior.languagesToTags(), IsEmpty());
}

TEST(Behavior, CopiesShareNothingAndMovesKeepAll)
{
  BehaviorInfo source;
  source.setPath("a");
  source.addTag("t", "en");
  BehaviorInfo copy(source);
  copy.setPath("b");
  EXPECT_EQ(source.path(), "a");

  BehaviorInfo target;
  BehaviorInfo returned = (target = source);
  returned.setPath("c");
  EXPECT_EQ(target.path(), "a");
  target = *&target;
  EXPECT_THAT(target.tags("en"), ElementsAre("t"));

  static_assert(std::is_nothrow_move_constructible_v<BehaviorInfo>);
  BehaviorInfo moved(std::move(target));
  EXPECT_EQ(moved.path(), "a");
  target = copy; // NOLINT(bugprone-use-after-move): assigning is allowed
  EXPECT_EQ(target.path(), "b");
}
