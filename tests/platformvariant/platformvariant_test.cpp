// SPDX-License-Identifier: Apache-2.0
// Packages as values of another variant library than the one that is built here.
#include "../filledpackage.hpp"

#include <xovalue/xovalue.hpp>

#include <gtest/gtest.h>

using vesk::PackageInfo;
using XO::XOValue;

TEST(PlatformVariant, BringsPackagesThereAndBack)
{
  auto package = filled<PackageInfo, KeptValues>();
  XOValue value;
  package.toXOValue(value);
  EXPECT_EQ(value.getSize(), 20);
  EXPECT_EQ(contentIn(PackageInfo(value)), contentIn(package));
}

TEST(PlatformVariant, TakesNeitherTextsNorEmptyValuesForArrays)
{
  for (std::size_t size = 0; size <= 25; ++size)
  {
    for (const XOValue& value : {XOValue(std::string(size, 'x')), XOValue()})
    {
      EXPECT_EQ(contentIn(PackageInfo(value)), contentIn(PackageInfo()));
      EXPECT_EQ(contentIn(vesk::BehaviorInfo(value)), contentIn(vesk::BehaviorInfo()));
      EXPECT_EQ(vesk::DialogInfo(value), vesk::DialogInfo());
    }
  }
}
