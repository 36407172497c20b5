// SPDX-License-Identifier: Apache-2.0
#include <tools/veskpackage/policy/glob.hpp>

#include <gmock/gmock.h>

TEST(Glob, MatchesPathsAndWhatIsBelow)
{
  struct Case
  {
    const char* pattern;
    std::vector<const char*> matched;
    std::vector<const char*> others;
  };
  const std::vector<Case> cases{
      {"a", {"a", "a/x.xml", "a/b/c"}, {"ab", "b/a", "A"}},
      {"./a//b/", {"a/b", "a/b/c"}, {"a", "b"}},
      {"*.xml", {"x.xml", ".xml", "x.xml.xml"}, {"a/x.xml", "x.xm", "x.xmlx"}},
      {"a*b*c", {"abc", "abcbc", "a-b-c/d"}, {"ab", "a/b/c", "abcb"}},
      {"?", {"a", "\u00e9"}, {"", "ab", "e\u0301"}},
      {"**/b", {"b", "a/b", "a/a/b/c"}, {"ab", "a/bc"}},
      {"a/**", {"a", "a/b"}, {"b/a"}},
      {"a/**/b/*/**/c", {"a/b/x/c", "a/b/b/x/y/c", "a/b/c/b/c/c"}, {"a/b/c", "b/b/x/c"}},
      {"a**", {"a", "abc"}, {"b", "b/a"}},
      {"[ab].xml", {"[ab].xml"}, {"a.xml"}},
  };
  for (const Case& each : cases)
  {
    const tool::Glob glob(each.pattern);
    for (const char* const path : each.matched)
    {
      EXPECT_TRUE(glob.matches(tool::namesIn(path))) << each.pattern << ' ' << path;
    }
    for (const char* const path : each.others)
    {
      EXPECT_FALSE(glob.matches(tool::namesIn(path))) << each.pattern << ' ' << path;
    }
  }
}
