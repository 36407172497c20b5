// SPDX-License-Identifier: Apache-2.0
#include "filledpackage.hpp"
#include "support.hpp"

#include <edit/commonsubsequence.hpp>
#include <edit/difference.hpp>
#include <edit/fieldvalue.hpp>
#include <tools/veskpackage/output/unifieddiff.hpp>

#include <nlohmann/json.hpp>

#include <array>
#include <random>

using namespace vesk;
using namespace vesk::edit;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// One line per difference: its path, and the values before and after, "-" for none. Checks that
/// the values are where the two paths lead.
std::vector<std::string> linesOf(const AnyConstReference& before, const AnyConstReference& after)
{
  std::vector<std::string> lines;
  for (const Difference& difference : differences(before, after))
  {
    std::string line = toText(difference.path()) + ':';
    for (const auto& [root, side] :
         {std::pair(before, difference.before), std::pair(after, difference.after)})
    {
      EXPECT_EQ(side.value.isValid(), !side.path.empty());
      if (side.value.isValid())
      {
        EXPECT_EQ(contentIn(valueAt(root, side.path)), contentIn(side.value)) << line;
      }
      line += ' ' + (side.value.isValid() ? toJson(side.value, -1) : "-");
    }
    lines.push_back(line);
  }
  return lines;
}

template <typename Value>
std::vector<std::string> linesOf(const Value& before, const Value& after)
{
  return linesOf(AnyConstReference(before), AnyConstReference(after));
}

PackageInfo changed(PackageInfo package, const std::vector<std::string>& assignments)
{
  for (const std::string& assignment : assignments)
  {
    const auto [path, value] = parseAssignment(assignment);
    setAt(AnyReference(package), path, value);
  }
  return package;
}

/// A package with a behavior for each letter, with that as its path and a name.
PackageInfo withBehaviors(const std::string& letters)
{
  PackageInfo package;
  for (const char letter : letters)
  {
    package.behaviors().emplace_back().setPath(std::string(1, letter));
    package.behaviors().back().setName(std::string("name ") + letter, "en");
  }
  return package;
}

std::list<std::string> letters(const std::string& text)
{
  std::list<std::string> list;
  for (const char letter : text)
  {
    list.emplace_back(1, letter);
  }
  return list;
}

/// The removed letters, then the added ones, then how many were replaced by others.
std::string summary(const std::string& before, const std::string& after)
{
  std::string removed;
  std::string added;
  int replaced = 0;
  const auto listBefore = letters(before);
  const auto listAfter = letters(after);
  for (const Difference& difference :
       differences(AnyConstReference(listBefore), AnyConstReference(listAfter)))
  {
    const bool wasThere = difference.before.value.isValid();
    const bool isThere = difference.after.value.isValid();
    replaced += wasThere && isThere ? 1 : 0;
    removed += wasThere && !isThere ? difference.before.value.as<std::string>() : "";
    added += isThere && !wasThere ? difference.after.value.as<std::string>() : "";
  }
  return '-' + removed + " +" + added + " ~" + std::to_string(replaced);
}
} // namespace

TEST(Difference, OfEqualPackagesThereIsNone)
{
  const auto package = filled<PackageInfo>();
  EXPECT_THAT(linesOf(package, PackageInfo(package)), IsEmpty());
  EXPECT_THAT(linesOf(PackageInfo(), PackageInfo()), IsEmpty());
}

TEST(Difference, IsFoundInEveryMemberOfEveryRecord)
{
  const auto package = filled<PackageInfo>();
  PackageInfo other;
  DistinctValues values(1000);
  fill(AnyReference(other), values);
  AnyReference(other).member("services").element(1).member("autoRun").set(false);
  const auto before = nlohmann::ordered_json::parse(contentIn(package)).flatten();
  const auto after = nlohmann::ordered_json::parse(contentIn(other)).flatten();
  std::vector<std::string> expected;
  for (const auto& [place, value] : before.items())
  {
    if (after[place] != value)
    {
      expected.push_back(": " + value.dump() + ' ' + after[place].dump());
    }
  }
  std::vector<std::string> found = linesOf(package, other);
  for (std::string& line : found)
  {
    line.erase(0, line.find(": "));
  }
  EXPECT_EQ(found, expected);
}

TEST(Difference, TellsMembersAndEntries)
{
  const PackageInfo before = changed(
      PackageInfo(), {"version=1", R"(names={"de": "a", "en": "b"})", R"(services=[{"name": "s"}])",
                      R"(behaviors=[{"path": "p", "tags": {"en": ["x", "y", "z"]}}])"});
  const PackageInfo after = changed(
      before, {"version=2", R"(names={"a.b": "c", "en": "B"})", "services[0].autoRun=true",
               R"(behaviors[0].tags={"en": ["x", "z", "w"], "fr": []})", "descriptions.de="});
  EXPECT_THAT(linesOf(before, after),
              ElementsAre(R"(version: "1" "2")", R"(names.de: "a" -)", R"(names.en: "b" "B")",
                          R"(names."a.b": - "c")", R"(descriptions.de: - "")",
                          R"(behaviors[0].tags.en[1]: "y" -)", R"(behaviors[0].tags.en[2]: - "w")",
                          "behaviors[0].tags.fr: - []", "services[0].autoRun: false true"));
}

TEST(Difference, FindsBehaviorsAgainThatHaveMovedOn)
{
  const PackageInfo before = withBehaviors("abcd");
  EXPECT_THAT(linesOf(before, withBehaviors("abxcd")),
              ElementsAre(testing::StartsWith(R"(behaviors[2]: - {"path":"x",)")));
  EXPECT_THAT(linesOf(before, withBehaviors("acd")),
              ElementsAre(testing::StartsWith(R"(behaviors[1]: {"path":"b",)")));
  // A new behavior in front of a changed one, which is recognised by its path.
  EXPECT_THAT(linesOf(before, changed(withBehaviors("axbcd"), {"behaviors[2].nature=solitary"})),
              ElementsAre(testing::StartsWith("behaviors[1]: - {"),
                          R"(behaviors[2].nature: "" "solitary")"));
  // Another path is a changed member as long as the order shows which behavior has it.
  EXPECT_THAT(linesOf(before, changed(before, {"behaviors[1].path=x"})),
              ElementsAre(R"(behaviors[1].path: "b" "x")"));
  // A moved one is removed and added.
  EXPECT_THAT(linesOf(before, withBehaviors("bcda")),
              ElementsAre(testing::StartsWith(R"(behaviors[0]: {"path":"a",)"),
                          testing::StartsWith(R"(behaviors[3]: - {"path":"a",)")));
}

TEST(Difference, PairsTheTextsOfListsInOrder)
{
  EXPECT_EQ(summary("", "abc"), "- +abc ~0");
  EXPECT_EQ(summary("abcdefg", "efgabcd"), "-efg +efg ~0");
  EXPECT_EQ(summary("abcdef", "xbcdyef"), "- +y ~1");
  EXPECT_EQ(summary("pxqxrs", "xpxqxrt"), "- +x ~1");
  const std::string many(50, 'a');
  EXPECT_EQ(summary(many + 'b' + many + 'c', 'x' + many + many + 'c'), "-b +x ~0");
}

// Against the table of all lengths, which takes quadratic time.
TEST(CommonSubsequence, IsTheLongest)
{
  std::mt19937 random(1);
  for (std::size_t round = 0; round < 200; ++round)
  {
    std::array<std::vector<std::string>, 2> lists;
    for (std::vector<std::string>& list : lists)
    {
      for (std::size_t left = random() % 32; left > 0; --left)
      {
        const std::size_t letters = 1 + round / 10;
        list.emplace_back(
            1, static_cast<char>('a' + std::min(random() % letters, random() % letters)));
      }
    }
    const auto& [first, second] = lists;
    std::vector lengths(first.size() + 1, std::vector<std::size_t>(second.size() + 1));
    for (std::size_t i = 0; i < first.size(); ++i)
    {
      for (std::size_t j = 0; j < second.size(); ++j)
      {
        lengths[i + 1][j + 1] = first[i] == second[j]
                                    ? lengths[i][j] + 1
                                    : std::max(lengths[i][j + 1], lengths[i + 1][j]);
      }
    }
    const IndexPairs pairs = commonSubsequence(first, second);
    EXPECT_EQ(pairs.size(), lengths.back().back());
    for (std::size_t i = 0; i < pairs.size(); ++i)
    {
      EXPECT_EQ(first.at(pairs[i].first), second.at(pairs[i].second));
      EXPECT_TRUE(i == 0 ||
                  (pairs[i - 1].first < pairs[i].first && pairs[i - 1].second < pairs[i].second));
    }
  }
}

TEST(UnifiedDiff, IsWhatDiffPrints)
{
  std::mt19937 random(1);
  const TemporaryFolder folder;
  for (int round = 0; round < 70; ++round)
  {
    const int most = round < 20 ? round % 4 : round - 20;
    // No line is there twice and none moves, so that there is one shortest difference.
    std::array<std::string, 2> texts;
    for (int line = 0; line < most; ++line)
    {
      for (std::string& text : texts)
      {
        text +=
            random() % static_cast<unsigned>(2 + most % 9) == 0 ? "" : std::to_string(line) + '\n';
      }
    }
    for (std::string& text : texts)
    {
      text.resize(text.size() - (text.empty() || random() % 3 != 0 ? 0 : 1));
    }
    const auto file = [&](const char* name, const std::string& text)
    { return QString::fromStdString(folder.file(name, text)); };
    const ProgramRun expected = runProgram(
        "diff", {"-u", "--label", "a", "--label", "b", file("a", texts[0]), file("b", texts[1])});
    std::ostringstream out;
    tool::printUnifiedDiff(out, "a", texts[0], "b", texts[1]);
    EXPECT_EQ(out.str(), expected.out);
  }
}

TEST(Difference, ComparesWhatIsHeldAndRefusesToMixTypes)
{
  using Values = std::map<std::string, AnyValue>;
  const Values before{{"a", 1}, {"b", 2}, {"c", {}}, {"d", 1.5}, {"e", {}}, {"f", Values{}}};
  const Values after{{"a", 1}, {"b", 3}, {"c", 3}, {"d", 1}, {"e", {}}, {"f", Values{{"g", 1}}}};
  EXPECT_THAT(linesOf(before, after), ElementsAre("b: 2 3", "c: - 3", "d: 1.5 1", "f.g: - 1"));
}
