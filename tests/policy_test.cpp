// SPDX-License-Identifier: Apache-2.0
// Which policy holds where, and what a baseline knows. What the command makes of them is in
// golden/tool/policy.txt and golden/tool/baseline.txt.
#include "support.hpp"

#include <tools/veskpackage/policy/baseline.hpp>
#include <tools/veskpackage/policy/filefault.hpp>
#include <tools/veskpackage/policy/policies.hpp>

#include <filesystem>
#include <map>
#include <random>

namespace check = vesk::check;

namespace
{
/// A policy that is known by the number of its patterns.
std::string policyWith(std::size_t patterns)
{
  std::string text = "[check]\nexclude = [";
  for (std::size_t i = 0; i < patterns; ++i)
  {
    text += "'x" + std::to_string(i) + "',";
  }
  return text + "]\n";
}

std::vector<check::Finding> some(const std::vector<check::Finding>& all, std::mt19937& random,
                                 std::map<std::size_t, std::size_t>& counts)
{
  std::vector<check::Finding> chosen;
  for (std::size_t count = random() % 12; count > 0; --count)
  {
    const std::size_t index = random() % all.size();
    chosen.push_back(all[index]);
    ++counts[index];
  }
  return chosen;
}
} // namespace

TEST(PolicyFile, IsTakenOrRefusedAtAPlace)
{
  const std::string many(500, '.');
  struct Case
  {
    std::string text;
    int line;
    int column; ///< 0 where the library sees to that
    const char* fault;
  };
  const std::vector<Case> cases{
      {"\n[check]\n\tstrict = maybe\n", 3, 0, ""},
      {"[check]\n[check]\n", 2, 0, ""},
      {"[check]\nstrict = true\nstrict = true\n", 3, 0, ""},
      {"a = \"\xFF\"\n", 1, 0, ""},
      {"# " + many + ".\n", 1, 1, "more than 500 dots in a line"},
      {"\n\n# " + many + '.', 3, 1, "more than 500 dots in a line"},
      {"# " + many + "\n# " + many + "\ncheck = []", 3, 9, "\"check\" is no table"},
      {policyWith(1001), 2, 11, "more than 1000 patterns"},
      {R"(check."str\nict" = 1)", 1, 7, R"(there is no key "str\nict"; did you mean "strict"?)"}};
  for (const Case& each : cases)
  {
    try
    {
      tool::parsePolicy(each.text, "file");
      ADD_FAILURE() << each.text;
    }
    catch (const tool::FileFault& fault)
    {
      const std::string shown = each.text.substr(0, 80) + fault.what();
      EXPECT_EQ(fault.place.line, each.line) << shown;
      EXPECT_TRUE(each.column == 0 || fault.place.column == each.column) << shown;
      EXPECT_TRUE(*each.fault == '\0' || fault.message == each.fault) << shown;
      EXPECT_EQ(fault.message.find('\n'), std::string::npos) << shown;
    }
  }
  EXPECT_EQ(tool::parsePolicy(policyWith(1000), "").excluded.size(), 1000U);
  const tool::Policy empty = tool::parsePolicy("[check]\n[check.severities]\n", "");
  EXPECT_TRUE(!empty.isStrict && empty.excluded.empty() && empty.severities.empty());
}

TEST(PolicyFile, IsReadOrRefusedWhateverItHolds)
{
  const std::string whole =
      "\xEF\xBB\xBF# a\r\ncheck.strict = true\ncheck.exclude = [ \"**/a\", 'b' ]\n"
      "check.severities.autorun-one = \"off\"\n"
      "check.severities.'unusual-name' = '''error'''\n";
  const tool::Policy policy = tool::parsePolicy(whole, "");
  EXPECT_TRUE(policy.isStrict);
  EXPECT_EQ(policy.severities,
            (std::map<std::string, check::Severity>{{"autorun-one", check::Severity::Off},
                                                    {"unusual-name", check::Severity::Error}}));
  std::mt19937 random(1);
  const std::string characters = "\n\r\"'.#\\\x1b\xC3\xFF 1ae";
  for (int i = 0; i < 3000; ++i)
  {
    std::string text = whole.substr(0, i % 2 == 0 ? whole.size() : random() % whole.size());
    for (std::size_t changes = random() % 4; changes > 0; --changes)
    {
      text.insert(random() % (text.size() + 1), 1, characters[random() % characters.size()]);
    }
    try
    {
      tool::parsePolicy(text, "file");
    }
    catch (const tool::FileFault& fault)
    {
      ASSERT_GE(fault.place.line, 1) << text;
      ASSERT_LE(fault.place.line, std::count(text.begin(), text.end(), '\n') + 1) << text;
      ASSERT_GE(fault.place.column, 1) << text;
      ASSERT_EQ(fault.message.find('\n'), std::string::npos) << text;
    }
  }
}

// Random folders, some with a policy: the nearest holds, however a manifest is named.
TEST(Policies, AreThoseOfTheNearestFolder)
{
  const TemporaryFolder folder;
  std::mt19937 random(1);
  std::vector<std::string> folders{"top"};
  std::map<std::string, std::size_t> nearest;
  for (std::size_t i = 0; i < 60; ++i)
  {
    const std::string parent = i == 0 ? "" : folders[random() % folders.size()];
    const std::string name = i == 0 ? "top" : parent + "/f" + std::to_string(i);
    folders.push_back(name);
    std::filesystem::create_directories(folder.path(name));
    nearest[name] = i == 0 ? 1 : nearest[parent];
    if (i == 0 || random() % 3 == 0)
    {
      folder.file(name + "/veskpackage.toml", policyWith(i + 1));
      nearest[name] = i + 1;
    }
  }
  tool::Policies policies;
  std::map<std::size_t, std::shared_ptr<const tool::Policy>> seen;
  for (int i = 0; i < 1000; ++i)
  {
    const std::string& in = folders[random() % folders.size()];
    const std::string& by = folders[random() % folders.size()];
    std::string up;
    for (auto slashes = std::count(by.begin(), by.end(), '/') + 1; slashes > 0; --slashes)
    {
      up += "../";
    }
    std::string detour = by;
    detour.append("/").append(up).append("./").append(in);
    const std::string path = random() % 2 == 0 ? in : detour;
    const auto policy = policies.policyOf(folder.path(path) + "//manifest.xml");
    ASSERT_EQ(policy->excluded.size(), nearest[in]) << path;
    std::shared_ptr<const tool::Policy>& same = seen[nearest[in]];
    ASSERT_TRUE(same == nullptr || same == policy) << path;
    same = policy;
    if (i == 500) // each was read once
    {
      std::filesystem::remove(folder.path("top/veskpackage.toml"));
    }
  }
}

TEST(Policies, ExcludeByThePathFromTheirFolder)
{
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder.path("a/b/own"));
  const std::string file =
      folder.file("a/veskpackage.toml", "[check]\nexclude = ['b/x.xml', '**/y', 'a']\n");
  folder.file("a/b/own/veskpackage.toml", "");
  struct Case
  {
    const char* path;
    bool isExcluded;
    bool isExcludedForAll; ///< when the policy of "a" is that of all
  };
  const std::vector<Case> cases{{"a/b/x.xml", true, true},    {"a/b/./../b//x.xml", true, true},
                                {"a/x.xml", false, false},    {"a/b/y/z/x.xml", true, true},
                                {"a/y", true, true},          {"a/b/own/y", false, true},
                                {"a/b/own/../y", true, true}, {"a", false, false},
                                {"a/a/x.xml", true, true},    {"b/x.xml", false, false},
                                {"y", false, false},          {"ab/x.xml", false, false}};
  tool::Policies found;
  tool::Policies forAll(file);
  tool::Policies none("");
  for (const Case& each : cases)
  {
    EXPECT_EQ(found.excludes(folder.path(each.path)), each.isExcluded) << each.path;
    EXPECT_EQ(forAll.excludes(folder.path(each.path)), each.isExcludedForAll) << each.path;
    EXPECT_FALSE(none.excludes(folder.path(each.path))) << each.path;
  }
}

// Beside plain numbers of the findings of a kind.
TEST(Baseline, KnowsAsManyAsThereWere)
{
  const std::vector<check::Finding> all = check::checkText(
      "<package uuid='a' version='1' c='' \u00e9='\u00e9'><a/><b/><names><name lang='1'/></names>"
      "<names/><x y='&quot;\\'/></package>");
  ASSERT_GE(all.size(), 6U);
  const TemporaryFolder folder;
  const std::string file = folder.path("baseline.json");
  std::mt19937 random(1);
  for (int i = 0; i < 100; ++i)
  {
    std::map<std::string, std::map<std::size_t, std::size_t>> known;
    tool::Baseline written("", file);
    for (const std::string manifest : {"a.xml", "b\xFF\".xml", "sub/c.xml"})
    {
      std::vector<check::Finding> findings = some(all, random, known[manifest]);
      written.take(folder.path(manifest), findings);
      EXPECT_TRUE(findings.empty());
    }
    std::ostringstream complaints;
    ASSERT_TRUE(written.save(complaints)) << complaints.str();
    tool::Baseline read(file, "");
    std::size_t countPassed = 0;
    std::size_t countGone = 0;
    for (auto& [manifest, counts] : known)
    {
      std::map<std::size_t, std::size_t> expected;
      std::vector<check::Finding> findings = some(all, random, expected);
      for (check::Finding& finding : findings) // elsewhere than it was
      {
        finding.begin = finding.end = {7, 7, 7, 7};
        finding.place = QString::fromStdString(finding.place).replace("/", "[12]/").toStdString();
      }
      read.take(folder.path(manifest), findings);
      for (auto& [index, count] : expected)
      {
        const std::size_t passed = std::min(count, counts[index]);
        count -= passed;
        counts[index] -= passed;
        countPassed += passed;
        const auto isSame = [&finding = all[index]](const check::Finding& other)
        { return other.rule == finding.rule && other.message == finding.message; };
        ASSERT_EQ(static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), isSame)),
                  count);
      }
      for (const auto& [index, count] : counts)
      {
        countGone += count;
      }
    }
    const std::string gone =
        countGone == 0 ? "" : ", " + std::to_string(countGone) + " can be dropped";
    std::ostringstream expected;
    expected << "; " << countPassed << (countPassed == 1 ? " finding of " : " findings of ") << file
             << " passed" << gone;
    ASSERT_EQ(read.summary(), expected.str());
  }
}
