// SPDX-License-Identifier: Apache-2.0
// Types across two shared libraries and a program, each compiled with hidden visibility.
#include "pose.hpp"

#include <package/packageinfo.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

TEST(SharedTypes, AreTheSameInEveryLibrary)
{
  vesk::AnyValue pose = one::makePose();
  EXPECT_EQ(pose.type(), vesk::typeOf<Pose>());
  EXPECT_EQ(pose.type(), vesk::getStruct("Pose"));
  EXPECT_EQ(pose.as<Pose>().x, 1.5);
  pose.member("frame").set("changed");
  EXPECT_EQ(two::frameOf(pose), "changed");
  const auto members = pose.to<std::map<std::string, vesk::AnyValue>>();
  EXPECT_EQ(two::convertedX(members), 1.5);
  try
  {
    two::convertedX(std::map<std::string, std::string>{{"x", "1"}});
    FAIL();
  }
  catch (const vesk::ConversionError& error)
  {
    EXPECT_STREQ(error.what(), "cannot convert map<string, string> to Pose: without \"frame\"");
  }
  // The library's own records are hidden as well.
  const auto& package =
      dynamic_cast<const vesk::StructTypeInterface&>(*vesk::getType(typeid(vesk::PackageInfo)));
  EXPECT_EQ(package.memberNames().size(), 20U);
}

TEST(SharedTypes, AreDescribedOnceForAllThreads)
{
  std::atomic<int> waiting = 8;
  std::vector<std::array<vesk::TypeInterface*, unseenTypes>> found(8);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < found.size(); ++i)
  {
    threads.emplace_back(
        [&, i]
        {
          --waiting;
          while (waiting > 0)
          {}
          found[i] = i % 3 == 0 ? typesOfUnseen() : i % 3 == 1 ? one::types() : two::types();
          EXPECT_EQ(vesk::AnyValue(vesk::PackageInfo()).member("services").size(), 0U);
        });
  }
  for (std::thread& thread : threads)
  {
    thread.join();
  }
  for (const auto& types : found)
  {
    EXPECT_EQ(types, found.front());
  }
  EXPECT_EQ(std::set<vesk::TypeInterface*>(found[0].begin(), found[0].end()).size(), unseenTypes);
}
