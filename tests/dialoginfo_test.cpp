// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

#include <QDomDocument>

using vesk::DialogInfo;

TEST(Dialog, StartsWithATypeVersionThatAnElementWithoutOneTakesAway)
{
  DialogInfo dialog;
  EXPECT_EQ(dialog.typeVersion(), "1.0");
  QDomDocument document;
  QDomElement element = document.createElement("dialogContent");
  EXPECT_TRUE(dialog.loadFromManifest(element));
  EXPECT_EQ(dialog.typeVersion(), "");
}

TEST(Dialog, ComparesAllItHolds)
{
  DialogInfo left;
  left.setTopic("en", "a");
  EXPECT_EQ(left.topic("en") + left.topic("xx"), "a");
  EXPECT_FALSE(left.removeTopic("xx"));
  for (const auto& change :
       std::vector<std::function<void(DialogInfo&)>>{
           [](DialogInfo& dialog) { dialog.setTopicName("x"); },
           [](DialogInfo& dialog) { dialog.setTypeVersion("x"); },
           [](DialogInfo& dialog) { dialog.setTopic("en", "x"); },
           [](DialogInfo& dialog) { dialog.setTopic("fr", "a"); },
           [](DialogInfo& dialog) { dialog.removeTopic("en"); }})
  {
    DialogInfo right = left;
    EXPECT_TRUE(left == right);
    EXPECT_FALSE(left != right);
    change(right);
    EXPECT_FALSE(left == right);
    EXPECT_TRUE(left != right);
  }
}
