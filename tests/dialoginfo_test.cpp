// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

using vesk::DialogInfo;

TEST(Dialog, ComparesAllItHolds)
{
  DialogInfo left;
  left.setTopic("en", "a");
  EXPECT_FALSE(left.removeTopic("xx"));
  EXPECT_EQ(left.topics().size(), 1U);
  for (const auto& change :
       std::vector<std::function<void(DialogInfo&)>>{
           [](DialogInfo& dialog) { dialog.setTopicName("x"); },
           [](DialogInfo& dialog) { dialog.setTypeVersion("x"); },
           [](DialogInfo& dialog) { dialog.setTopic("en", "x"); },
           [](DialogInfo& dialog) { dialog.setTopic("fr", "a"); },
           [](DialogInfo& dialog) { EXPECT_TRUE(dialog.removeTopic("en")); }})
  {
    DialogInfo right = left;
    EXPECT_TRUE(left == right);
    EXPECT_FALSE(left != right);
    change(right);
    EXPECT_FALSE(left == right);
    EXPECT_TRUE(left != right);
  }
}
