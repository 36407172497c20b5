// SPDX-License-Identifier: Apache-2.0
// What is said of texts that are no strict XML, beside the verdicts of a reader and of the strict parser.
#include "findings.hpp"

#include <package/packageinfo.hpp>
#include <source/document.hpp>

#include <map>
#include <random>

using namespace vesk::check;

namespace
{
/// With a piece left out, put in or doubled, or without its end.
std::string broken(std::string text, std::mt19937& random)
{
  const std::vector<std::string> pieces{"<",   ">",    "\"",  "&",    "a=''", "uuid='u'",
                                        "]]>", "<!--", "--",  "\xFF", "\x01", "/",
                                        "<a>", "&#0;", "&x;", "?>"};
  const std::size_t at = random() % (text.size() + 1);
  const std::size_t size = 1 + random() % 4;
  switch (random() % 4)
  {
  case 0:
    return text.erase(at, size);
  case 1:
    return text.insert(at, text.substr(at, size));
  case 2:
    return text.substr(0, at);
  default:
    return text.insert(at, pieces[random() % pieces.size()]);
  }
}

std::string shown(const std::vector<Finding>& findings)
{
  std::ostringstream out;
  for (const Finding& finding : findings)
  {
    out << finding.begin.offset << ' ' << finding.rule->tag << ' ' << finding.place << ' '
        << finding.message << '\n';
  }
  return out.str();
}
} // namespace

TEST(Verdicts, AreThoseOfTheReaderAndOfTheStrictParser)
{
  const CapturedLog refusals;
  std::mt19937 random(11);
  std::map<std::string, int> counts;
  for (const std::string& path : goldenManifests())
  {
    const std::string original = contentOf(path + ".xml");
    if (!vesk::source::Document::parse(original).encoding().isUtf8())
    {
      continue;
    }
    for (int i = 0; i < 60; ++i)
    {
      const std::string text = broken(original, random);
      const auto strict = vesk::source::Document::parseText(text).error();
      const bool isRead = vesk::PackageInfo().loadFromManifestContent(text);
      const std::vector<Finding> findings = checkText(text);
      const std::vector<std::string> tags = tagsOf(findings);
      const auto has = [&tags](const char* tag)
      { return std::count(tags.begin(), tags.end(), tag) != 0; };
      const bool isRefused = has("not-well-formed") || has("beyond-limits");
      const bool isNotStrict = has("not-strict") || has("unknown-encoding");
      EXPECT_EQ(isRefused, !isRead) << text;
      // What entities bring is not parsed strictly.
      EXPECT_TRUE((isRefused || isNotStrict) == strict.has_value() ||
                  (isRefused && text.find("<!ENTITY") != std::string::npos))
          << text;
      ++counts[isRefused ? "refused" : isNotStrict ? "not strict" : "strict"];
      const std::vector<Finding> draft = checkDraft(text);
      EXPECT_TRUE(isRefused || shown(draft) == shown(findings)) << text;
      for (const Finding& finding : draft)
      {
        EXPECT_FALSE(finding.mend && strict) << text;
      }
    }
  }
  EXPECT_GT(counts["refused"], 300);
  EXPECT_GT(counts["not strict"], 20);
  EXPECT_GT(counts["strict"], 100);
}
