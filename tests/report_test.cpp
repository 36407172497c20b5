// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

using testing::HasSubstr;
using vesk::PackageInfo;

TEST(Report, OfAnEmptyPackage)
{
  EXPECT_EQ(printed(PackageInfo()), R"(UUID: 
Version: 
Type Version: 
Author: 
Organization: 
Date: 
Channel: 
Path: 
Names: 
Descriptions:
Supported Languages:
Robotic requirements:
Software requirements:
Languages
*********
Behaviors
*********
Dialogs
*******
)");
}

TEST(Report, OfALargePackage)
{
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestFile(EXAMPLE_MANIFESTS "/office-assistant.xml"));
  package.setPath("/packages/office");
  EXPECT_EQ(printed(package), contentOf(GOLDEN_FILES "/office-assistant.report.txt"));
}

TEST(Report, KeepsLabelsAndSeparatorsOfEmptyValues)
{
  PackageInfo package;
  package.addRobotRequirement({"m", "", "", "", ""});
  package.addMirelRequirement({"1", ""});
  EXPECT_THAT(printed(package), HasSubstr("Robotic requirements:\nModel:m; Head:  ~ ; Body:  ~ \n"
                                          "Software requirements:\n1 ~ \n"));
}

TEST(Report, SetsTheSeparatorOfTagsOnceForAllLanguages)
{
  vesk::BehaviorInfo behavior;
  behavior.addTag("a", "en");
  behavior.addTag("b", "en");
  behavior.addTag("c", "fr");
  behavior.addTriggerSentence("d", "en");
  behavior.addTriggerSentence("e", "fr");
  behavior.addTriggerSentence("f", "fr");
  behavior.conditions("p");
  behavior.addPermission("canStandUp");
  behavior.addPermission("canSitDown");
  EXPECT_EQ(printed(behavior), R"(Path: 
Nature: 
UserRequestable0
Names: 
Descriptions:
Tags:
  en -> a, b
  fr -> , c
Trigger sentences:
  en -> "d"
  fr -> "e", "f"
Loading responses:
Conditions:
  p -> 
Permissions:
canStandUp, canSitDown
)");
}

TEST(Report, IsFlushedLineByLine)
{
  struct CountingBuffer : std::stringbuf
  {
    int sync() override
    {
      EXPECT_EQ(str().back(), '\n');
      ++flushes;
      return std::stringbuf::sync();
    }
    int flushes = 0;
  } buffer;
  std::ostream out(&buffer);
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestFile(EXAMPLE_MANIFESTS "/office-assistant.xml"));
  out << package;
  const std::string text = buffer.str();
  EXPECT_EQ(buffer.flushes, std::count(text.begin(), text.end(), '\n'));
}
