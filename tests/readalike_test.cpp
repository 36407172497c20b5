// SPDX-License-Identifier: Apache-2.0
// Manifests that are read without the toolkit's parser are read as with it: those of this project, and
// random changes of them. Set READALIKE_COUNT for more than a few of these.
#include "changedmanifests.hpp"

#include <fuzz/readalike.hpp>
#include <iostream>

namespace
{
/// What fuzzers put into manifests, and what the parsers may take for something else.
std::vector<std::string> tokens()
{
  std::vector<std::string> all{" ",
                               "\t",
                               "\n",
                               "\r",
                               "\x85",
                               "\xC2\x85",
                               "\xC2\xB7",
                               "\xCB\x81",
                               "\xE3\x80\x80",
                               "\xE2\x80\x8B",
                               "\xEF\xBB\xBF",
                               "\xF0\x9F\xBF\xBE",
                               "&#9;",
                               "&#xA0;",
                               "&#65279;",
                               "&#0065;",
                               "&#x00000041;",
                               "&#4294967361;",
                               "<b>c</b>",
                               "<!---->",
                               "<![CDATA[]]>",
                               "<![CDATA[ ]]>",
                               "<a:b/>",
                               " x='&#10;'",
                               " x='\n'",
                               "<?x?>",
                               "<?xml-x encoding='latin1'?>",
                               "<canSitDown/>",
                               "version='1.1'"};
  std::istringstream lines(contentOf(PROJECT_FOLDER "fuzz/manifest.dict"));
  for (std::string line; std::getline(lines, line);)
  {
    std::string token;
    for (std::size_t i = 1; i + 1 < line.size() && line.front() == '"'; ++i)
    {
      if (line[i] == '\\' && line[i + 1] == 'x')
      {
        token += static_cast<char>(std::stoi(line.substr(i + 2, 2), nullptr, 16));
        i += 3;
      }
      else
      {
        i += line[i] == '\\' ? 1 : 0;
        token += line[i];
      }
    }
    all.push_back(token);
  }
  return all;
}

} // namespace

TEST(ReadAlike, ManifestsOfThisProject)
{
  std::size_t withoutToolkit = 0;
  for (const std::string& path : exampleManifests())
  {
    EXPECT_TRUE(requireReadAlike(contentOf(path))) << path;
  }
  const std::vector<std::string> all = manifests();
  for (const std::string& manifest : all)
  {
    withoutToolkit += requireReadAlike(manifest) ? 1 : 0;
  }
  std::cout << withoutToolkit << " of " << all.size() << " are read without the toolkit\n";
}

TEST(ReadAlike, ChangedManifests)
{
  const char* const wanted = std::getenv("READALIKE_COUNT");
  const int count = wanted != nullptr ? std::stoi(wanted) : 2000;
  Changes changes(manifests(), tokens());
  int withoutToolkit = 0;
  for (int i = 0; i < count; ++i)
  {
    withoutToolkit += requireReadAlike(changes.next()) ? 1 : 0;
  }
  std::cout << withoutToolkit << " of " << count << " are read without the toolkit\n";
  EXPECT_GT(withoutToolkit, count / 10);
}
