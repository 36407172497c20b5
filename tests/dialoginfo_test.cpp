// SPDX-License-Identifier: Apache-2.0
#include "filledpackage.hpp"

#include <gtest/gtest.h>

using namespace vesk;

TEST(Dialog, ComparesAllItHolds)
{
  const auto left = filled<DialogInfo>();
  DialogInfo right = left;
  EXPECT_FALSE(right.removeTopic("xx"));
  EXPECT_TRUE(left == right && !(left != right));
  EXPECT_TRUE(right.removeTopic("de"));
  EXPECT_TRUE(left != right && !(left == right));
  for (const std::string& name : AnyReference(right).memberNames())
  {
    right = left;
    AnyValue other(filled<DialogInfo>(DistinctValues(1000)));
    AnyReference(right).member(name).set(other.member(name));
    EXPECT_TRUE(left != right && !(left == right)) << name;
  }
}
