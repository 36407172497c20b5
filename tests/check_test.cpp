// SPDX-License-Identifier: Apache-2.0
#include "manifestpattern.hpp"
#include "support.hpp"

#include <check/manifestcheck.hpp>
#include <package/packageinfo.hpp>

#include <QDomDocument>

#include <algorithm>
#include <set>

using namespace vesk::check;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// The findings as `line:column-line:column severity tag /place: message`, the second place without its
/// line where that is the same.
std::string listed(const std::vector<Finding>& findings)
{
  std::ostringstream out;
  for (const Finding& finding : findings)
  {
    const bool isOneLine = finding.begin.line == finding.end.line;
    out << finding.begin.line << ':' << finding.begin.column << '-'
        << (isOneLine ? "" : std::to_string(finding.end.line) + ':') << finding.end.column << ' '
        << nameOf(finding.severity) << ' ' << finding.rule->tag << ' ' << finding.place << ": "
        << finding.message << '\n';
  }
  return out.str();
}

/// The same without places in the text, which a parsed document does not tell exactly.
std::string listedAsParsed(std::vector<Finding> findings)
{
  for (Finding& finding : findings)
  {
    finding.begin = finding.end = {};
  }
  std::sort(findings.begin(), findings.end(),
            [](const Finding& left, const Finding& right)
            {
              return std::tie(left.place, left.rule, left.message) <
                     std::tie(right.place, right.rule, right.message);
            });
  return listed(findings);
}

std::vector<std::string> tagsOf(const std::vector<Finding>& findings)
{
  std::vector<std::string> tags(findings.size());
  std::transform(findings.begin(), findings.end(), tags.begin(),
                 [](const Finding& finding) { return finding.rule->tag; });
  return tags;
}

/// Also what is reported on request only.
Options everything()
{
  Options options;
  for (const Rule& rule : rules())
  {
    options.severities[rule.tag] = std::max(rule.severity, Severity::Hint);
  }
  return options;
}

/// The faulty manifests, each with what is wrong with it beside in a .txt file.
std::vector<std::string> faultyManifests()
{
  std::vector<std::string> paths;
  for (const QFileInfo& file : QDir(GOLDEN_FILES "/check").entryInfoList({"*.xml"}))
  {
    paths.push_back(file.path().toStdString() + '/' + file.completeBaseName().toStdString());
  }
  return paths;
}
} // namespace

TEST(Check, FindsExactlyWhatIsListedBesideFaultyManifests)
{
  for (const std::string& path : faultyManifests())
  {
    EXPECT_EQ(listed(checkFile(path + ".xml", everything())), contentOf(path + ".txt")) << path;
  }
}

TEST(Check, ShowsEveryRuleAtWork)
{
  std::set<std::string> found{"unreadable", "missing-file",
                              "repeated-uuid"}; // which have tests of their own
  for (const std::string& path : faultyManifests())
  {
    for (const std::string& tag : tagsOf(checkFile(path + ".xml", everything())))
    {
      found.insert(tag);
    }
  }
  for (const Rule& rule : rules())
  {
    EXPECT_EQ(found.count(rule.tag), 1U) << rule.tag;
    EXPECT_EQ(findRule(rule.tag), &rule);
    EXPECT_GT(std::string(rule.explanation).size(), 60U) << rule.tag;
  }
  EXPECT_EQ(findRule("no-such-rule"), nullptr);
}

// What a rule finds is either still there when a manifest has been read and written, or lost.
TEST(Check, SaysOfEachRuleWhetherWhatItFindsIsLost)
{
  const CapturedLog refusals;
  std::map<std::string, int> before;
  std::map<std::string, int> after;
  for (const std::string& path : faultyManifests())
  {
    vesk::PackageInfo package;
    if (package.loadFromManifestFile(path + ".xml"))
    {
      const auto findings = checkFile(path + ".xml", everything());
      for (const Finding& finding : findings)
      {
        const bool isWithinLost = std::any_of(
            findings.begin(), findings.end(),
            [&place = finding.place](const Finding& other) {
              return other.rule->isLost && place.compare(0, other.place.size(), other.place) == 0;
            });
        before[finding.rule->tag] += finding.rule->isLost || !isWithinLost ? 1 : 0;
      }
      for (const std::string& tag :
           tagsOf(checkText(package.saveToManifestContent(), everything())))
      {
        ++after[tag];
      }
    }
  }
  const std::set<std::string> mended{"root-name", "not-strict", "unusual-name", "repeated-section"};
  for (const Rule& rule : rules())
  {
    const bool isFewer = after[rule.tag] < before[rule.tag];
    EXPECT_EQ(rule.isLost, isFewer && mended.count(rule.tag) == 0) << rule.tag;
  }
}

TEST(Check, FindsNothingInTheExamples)
{
  for (const std::string& path : exampleManifests())
  {
    EXPECT_THAT(listed(checkFile(path)), IsEmpty()) << path;
  }
}

TEST(Check, FindsTheSameInFilesTextsAndDocuments)
{
  const CapturedLog captured;
  for (const std::string& path : faultyManifests())
  {
    const std::vector<Finding> findings = checkFile(path + ".xml");
    const std::string inFile = listed(findings);
    const std::string text = contentOf(path + ".xml");
    EXPECT_EQ(listed(checkText(text)), inFile);
    QFile device(QString::fromStdString(path + ".xml"));
    ASSERT_TRUE(device.open(QIODevice::ReadOnly));
    EXPECT_EQ(listed(checkDevice(device)), inFile);
    QDomDocument document;
    if (inFile.find("beyond-limits") == std::string::npos &&
        inFile.find("not-strict") == std::string::npos &&
        document.setContent(QString::fromStdString(text)))
    {
      EXPECT_EQ(listedAsParsed(checkDocument(document)), listedAsParsed(findings)) << path;
    }
  }
  QDomDocument made;
  made.appendChild(made.createElement("package")).toElement().setAttribute("uuid", "u");
  EXPECT_EQ(listed(checkDocument(made)),
            "0:0-0 warning missing-identity /package/@version: the package has no version\n");
  EXPECT_THAT(captured.messages, IsEmpty());
}

TEST(Check, ReportsAsItIsAsked)
{
  const std::string manifest = "<package uuid='u'><x/><services/></package>";
  EXPECT_THAT(tagsOf(checkText(manifest)), ElementsAre("missing-identity", "unknown-element"));
  const auto asked = checkText(
      manifest, {{{"missing-identity", Severity::Off}, {"unknown-element", Severity::Error}}, {}});
  ASSERT_THAT(tagsOf(asked), ElementsAre("unknown-element"));
  EXPECT_EQ(asked[0].severity, Severity::Error);
  EXPECT_EQ(asked[0].rule->severity, Severity::Warning);
  EXPECT_THAT(tagsOf(checkFile("/nowhere/manifest.xml")), ElementsAre("unreadable"));
}

TEST(Check, CountsWhatIsTooMuchToList)
{
  const auto findings = checkText(expanded("<package uuid='u' version='1'>{1500*<a/>}</package>"));
  EXPECT_EQ(findings.size(), 1000U);
  EXPECT_THAT(findings.back().message, testing::EndsWith("; 500 more of these are left out"));
}

TEST(Check, LooksUpPathsInThePackage)
{
  const TemporaryFolder folder;
  folder.file("talk.top", "");
  folder.file("behavior", "");
  ASSERT_TRUE(QDir(QString::fromStdString(folder.path(""))).mkdir("tal.folder"));
  const std::string manifest =
      "<package uuid='u' version='1'><contents><behaviorContent path='behavior'/>"
      "<behaviorContent path='talk'/><dialogContent topicName='t'>"
      "<topic language='a' path='talk'/><topic language='b' path='tal'/>"
      "<topic language='c' path='talk.top'/><topic language='d' path='tal.folder/talk'/>"
      "</dialogContent></contents></package>";
  EXPECT_THAT(checkText(manifest), IsEmpty());
  EXPECT_EQ(
      listed(checkText(manifest, {{}, folder.path("")})),
      "1:98-102 warning missing-file /package/contents/behaviorContent[2]/@path: the package has "
      "no file or folder \"talk\"\n"
      "1:193-196 warning missing-file /package/contents/dialogContent/topic[2]/@path: the package "
      "has no file or folder \"tal\"\n"
      "1:262-277 warning missing-file /package/contents/dialogContent/topic[4]/@path: the package "
      "has no file or folder \"tal.folder/talk\"\n");
}
