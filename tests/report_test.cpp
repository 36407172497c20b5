// SPDX-License-Identifier: Apache-2.0
// What reports hold is compared with golden files by the tests of reading and of the tool.
#include "support.hpp"

#include <package/packageinfo.hpp>

using vesk::PackageInfo;

TEST(Report, HasEveryLabelAlsoWithoutValues)
{
  PackageInfo package;
  package.setPath("/packages/a");
  EXPECT_EQ(printed(package), contentOf(GOLDEN_FILES "/empty.report.txt"));
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
