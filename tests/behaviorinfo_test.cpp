// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/behaviorinfo.hpp>

using testing::ElementsAre;
using testing::Pair;
using vesk::BehaviorInfo;

namespace
{
/// Checks one family of lists, given by its operations.
template <auto read, auto listAll, auto add, auto insert, auto update, auto remove>
void checkLists(bool addsAKey)
{
  BehaviorInfo behavior;
  (behavior.*insert)("x", "fr", 0);
  (behavior.*insert)("y", "fr", 5);
  (behavior.*insert)("z", "fr", -1);
  (behavior.*insert)("w", "fr", 1);
  (behavior.*insert)("v", "fr", 4);
  (behavior.*insert)("u", "fr", 0);
  EXPECT_THAT((behavior.*read)("fr"), ElementsAre("u", "x", "w", "y", "z", "v"));

  for (const char* text : {"a", "c", "a"})
  {
    (behavior.*add)(text, "en");
  }
  EXPECT_TRUE((behavior.*update)("a", "b", "en"));
  EXPECT_THAT((behavior.*read)("en"), ElementsAre("b", "c", "a"));
  EXPECT_FALSE((behavior.*update)("x", "b", "en"));
  EXPECT_FALSE((behavior.*update)("a", "b", "de"));
  EXPECT_FALSE((behavior.*remove)("x", "en"));
  EXPECT_FALSE((behavior.*remove)("a", "de"));
  (behavior.*add)("c", "en");
  EXPECT_TRUE((behavior.*remove)("c", "en"));
  EXPECT_THAT((behavior.*read)("en"), ElementsAre("b", "a", "c"));
  EXPECT_THAT((behavior.*listAll)(), testing::SizeIs(2)); // "en" and "fr"

  (behavior.*add)("a", "it");
  EXPECT_TRUE((behavior.*remove)("a", "it"));
  EXPECT_THAT((behavior.*listAll)(), testing::Contains(Pair("it", ElementsAre()))); // the key stays
  EXPECT_TRUE((behavior.*read)("de").empty());
  EXPECT_EQ((behavior.*listAll)().count("de") != 0, addsAKey);
}
} // namespace

TEST(Behavior, EditsItsLists)
{
  using B = BehaviorInfo;
  checkLists<&B::tags, &B::languagesToTags, &B::addTag, &B::insertTag, &B::updateTag,
             &B::removeTag>(false);
  checkLists<&B::triggerSentences, &B::languagesToTriggerSentences, &B::addTriggerSentence,
             &B::insertTriggerSentence, &B::updateTriggerSentence, &B::removeTriggerSentence>(true);
  checkLists<&B::loadingResponses, &B::languagesToLoadingResponses, &B::addLoadingResponse,
             &B::insertLoadingResponse, &B::updateLoadingResponse, &B::removeLoadingResponse>(true);
  checkLists<&B::conditions, &B::purposesToConditions, &B::addCondition, &B::insertCondition,
             &B::updateCondition, &B::removeCondition>(true);
}

TEST(Behavior, ClaimsSupportedPermissionsOnce)
{
  EXPECT_THAT(BehaviorInfo::supportedPermissions(),
              ElementsAre("canRunInSleep", "canRunOnPod", "canStandUp", "canSitDown"));
  BehaviorInfo behavior;
  behavior.setUserRequestable(true);
  behavior.setUserRequestable(false);
  EXPECT_FALSE(behavior.isUserRequestable());
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
