// SPDX-License-Identifier: Apache-2.0
#include "findings.hpp"
#include "manifestpattern.hpp"

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
} // namespace

TEST(Check, FindsExactlyWhatIsListedBesideFaultyManifests)
{
  for (const std::string& path : goldenManifests())
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
  const std::set<std::string> mended{"root-name",    "not-strict",       "unknown-encoding",
                                     "unusual-name", "repeated-section", "needless-repeat"};
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
        inFile.find("unknown-encoding") == std::string::npos &&
        document.setContent(QString::fromStdString(text)))
    {
      EXPECT_EQ(listedAsParsed(checkDocument(document)), listedAsParsed(findings)) << path;
    }
  }
  QDomDocument made;
  made.appendChild(made.createElement("package")).toElement().setAttribute("uuid", "u");
  EXPECT_EQ(listed(checkDocument(made)),
            "0:0-0 warning missing-identity /package/@version: \"package\" has no attribute "
            "\"version\"; add it\n");
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
  const QDir package(QString::fromStdString(folder.path("")));
  ASSERT_TRUE(package.mkdir("tal.folder") && package.mkdir("bin"));
  folder.file("bin/run", "");
  const std::string paths = "<contents><behaviorContent path='behavior'/>"
                            "<behaviorContent path='talk'/><dialogContent topicName='t'>"
                            "<topic language='aa' path='talk'/><topic language='bb' path='tal'/>"
                            "<topic language='cc' path='talk.top'/>"
                            "<topic language='dd' path='tal.folder/talk'/>"
                            "</dialogContent></contents>";
  std::string services;
  for (const char* command :
       {"bin/run", " \"bin/run\" -x", "'bin/run' a", "run", "/bin/no", "../no/no", "$BIN/no",
        "\"bin/no\"x", "bin/no --file a", "'bin/no x' a"})
  {
    services += "<service name='" + std::to_string(services.size()) + "' execStart=\"" +
                QString(command).toHtmlEscaped().toStdString() + "\"/>";
  }
  const std::string manifest =
      "<package uuid='u' version='1'>" + paths + "<services>" + services + "</services></package>";
  EXPECT_THAT(checkText(manifest), IsEmpty());
  std::string found;
  for (const Finding& finding : checkText(manifest, {{}, folder.path("")}))
  {
    found += std::string(finding.rule->tag) + ' ' + finding.place + ' ' + finding.message + '\n';
  }
  EXPECT_EQ(
      found,
      R"(missing-file /package/contents/behaviorContent[2]/@path the package has no file or folder "talk"
missing-file /package/contents/dialogContent/topic[2]/@path the package has no file or folder "tal"
missing-file /package/contents/dialogContent/topic[4]/@path the package has no file or folder "tal.folder/talk"
missing-file /package/services/service[9]/@execStart the package has no program "bin/no"
missing-file /package/services/service[10]/@execStart the package has no program "bin/no x"
)");
}

// What is found before the place where a text ends is found in the whole one, too.
TEST(Check, FindsNothingInADraftThatMayBeGoneWhenItIsWhole)
{
  std::vector<std::string> files = exampleManifests();
  for (const QFileInfo& file : QDir(GOLDEN_FILES "/check").entryInfoList({"*.xml"}))
  {
    files.push_back(file.filePath().toStdString());
  }
  const auto nameOf = [](const Finding& finding)
  { return finding.rule->tag + (' ' + std::to_string(finding.begin.offset)); };
  for (const std::string& file : files)
  {
    const std::string text = contentOf(file);
    std::set<std::string> whole;
    for (const Finding& finding : checkDraft(text))
    {
      whole.insert(nameOf(finding));
    }
    for (std::size_t end = text.find('<'); end < text.size();
         end = text.find_first_of("<>\"", end + 1))
    {
      std::size_t errors = 0;
      for (const Finding& finding : checkDraft(text.substr(0, end)))
      {
        const bool isError = finding.severity == Severity::Error;
        errors += isError ? 1 : 0;
        EXPECT_TRUE(isError || whole.count(nameOf(finding)) == 1)
            << file << ' ' << end << ' ' << nameOf(finding) << finding.message;
      }
      EXPECT_LE(errors, 1U) << file << ' ' << end;
    }
  }
}
