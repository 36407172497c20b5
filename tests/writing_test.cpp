// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

using testing::ElementsAre;
using testing::HasSubstr;
using vesk::PackageInfo;

namespace
{
PackageInfo filledPackage()
{
  PackageInfo package;
  package.setUuid("u & \"v\"");
  package.setVersion("1");
  package.setAuthor("Zoë");
  package.setPath("not written");
  package.setInstaller("not written");
  package.setName("<a> & b", "fr");
  package.setName("", "de");
  package.setDescription("]]>", "en");
  package.addSupportedLanguage("en");
  package.addSupportedLanguage("");
  package.addDescriptionLanguage("fr");
  package.addRobotRequirement({"m", "1", "", "", "4"});
  package.addMirelRequirement({"2", ""});
  package.addService({"", "s", false});
  package.addService({"run", "", true});
  package.addExecutableFile("bin/a");
  package.addExecutableFile("");
  vesk::BehaviorInfo behavior;
  behavior.setPath("b");
  behavior.setUserRequestable(true);
  behavior.setName("n", "en");
  behavior.setDescription("", "en");
  behavior.addTag("", "en");
  behavior.addTriggerSentence("a < b", "fr");
  behavior.addTriggerSentence("c", "");
  behavior.loadingResponses("en");
  behavior.addCondition("a < b && c", "go");
  behavior.addPermission("canSitDown");
  package.addBehavior(behavior);
  package.addBehavior({});
  vesk::DialogInfo dialog;
  dialog.setTopic("en", "t");
  package.addDialog(dialog);
  package.addLanguage({});
  return package;
}

const char* const filledManifest = R"(<?xml version='1.0' encoding='UTF-8'?>
<package author="Zoë" uuid="u &amp; &quot;v&quot;" version="1">
  <names>
    <name lang="fr">&lt;a> &amp; b</name>
  </names>
  <descriptions>
    <description lang="en">]]&gt;</description>
  </descriptions>
  <supportedLanguages>
    <language>en</language>
    <language></language>
  </supportedLanguages>
  <descriptionLanguages>
    <language>fr</language>
  </descriptionLanguages>
  <contents>
    <behaviorContent path="b">
      <userRequestable/>
      <nature></nature>
      <names>
        <name lang="en">n</name>
      </names>
      <descriptions/>
      <tags/>
      <triggerSentences>
        <sentence>c</sentence>
        <sentence lang="fr">a &lt; b</sentence>
      </triggerSentences>
      <loadingResponses/>
      <autonomous>
        <condition purpose="go"><![CDATA[a < b && c]]></condition>
      </autonomous>
      <permissions>
        <canSitDown/>
      </permissions>
    </behaviorContent>
    <behaviorContent path="">
      <nature></nature>
      <permissions/>
    </behaviorContent>
    <dialogContent topicName="" typeVersion="1.0">
      <topic language="en" path="t"/>
    </dialogContent>
    <languageContent path="">
      <engine name="" version=""/>
      <locale></locale>
    </languageContent>
  </contents>
  <requirements>
    <mirelRequirement minVersion="2"/>
    <robotRequirement maxBodyVersion="4" minHeadVersion="1" model="m"/>
  </requirements>
  <services>
    <service autorun="false" name="s"/>
    <service autorun="true" execStart="run"/>
  </services>
  <executableFiles>
    <file path="bin/a"/>
    <file/>
  </executableFiles>
</package>
)";

/// The lines of a manifest without their indentation, and how deep the deepest is indented.
std::pair<std::string, std::size_t> unindented(const std::string& manifest)
{
  std::istringstream lines(manifest);
  std::string result;
  std::size_t deepest = 0;
  for (std::string line; std::getline(lines, line);)
  {
    const std::size_t indent = line.find_first_not_of(' ');
    deepest = std::max(deepest, indent);
    result += line.substr(indent) + '\n';
  }
  return {result, deepest};
}
} // namespace

TEST(Writing, WritesEverySectionInOrderAndLeavesOutWhatIsEmpty)
{
  const TemporaryFolder folder;
  const PackageInfo package = filledPackage();
  ASSERT_TRUE(package.saveToManifestFile(folder.path("é.xml")));
  EXPECT_EQ(contentOf(folder.path("é.xml")), filledManifest);

  QFile file(QString::fromStdString(folder.file("long.xml", std::string(100000, 'x'))));
  ASSERT_TRUE(package.saveToManifestFile(file));
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(contentOf(folder.path("long.xml")), filledManifest);
}

TEST(Writing, IndentsFilesByTwoAndTextsByOne)
{
  const auto [fileLines, fileIndent] = unindented(filledManifest);
  const auto [textLines, textIndent] = unindented(filledPackage().saveToManifestContent());
  EXPECT_EQ(textLines, fileLines);
  EXPECT_EQ(fileIndent, 8U);
  EXPECT_EQ(textIndent, 4U);
}

TEST(Writing, OfAnEmptyPackageGivesEmptyContents)
{
  EXPECT_EQ(PackageInfo().saveToManifestContent(),
            "<?xml version='1.0' encoding='UTF-8'?>\n<package>\n <contents/>\n</package>\n");
}

TEST(Writing, GivesFalseSilentlyWhereNoFileCanBeOpened)
{
  const CapturedLog captured;
  const TemporaryFolder folder;
  EXPECT_FALSE(PackageInfo().saveToManifestFile(folder.path("missing/m.xml")));
  QFile open(QString::fromStdString(folder.path("open.xml")));
  ASSERT_TRUE(open.open(QIODevice::WriteOnly));
  EXPECT_FALSE(PackageInfo().saveToManifestFile(open));
  EXPECT_TRUE(captured.messages.empty());
}

TEST(Writing, GivesWhatReadsAgainAndIsWrittenTheSameAgain)
{
  for (const std::string& path : exampleManifests())
  {
    PackageInfo package;
    ASSERT_TRUE(package.loadFromManifestFile(path));
    const std::string written = package.saveToManifestContent();
    PackageInfo again;
    ASSERT_TRUE(again.loadFromManifestContent(written));
    EXPECT_EQ(printed(again), printed(package)) << path;
    EXPECT_EQ(again.saveToManifestContent(), written) << path;
  }
}

TEST(Writing, GivesAWellFormedManifestWhateverTheRecordHolds)
{
  const std::vector<std::string> texts{
      "]]>",
      "a]]>b]]>]]>",
      "]]",
      "]]]>",
      "\xEF\xBF\xBE\xEF\xBF\xBF", // U+FFFE, U+FFFF
      "a\x01\x02\x1F\x7F z",
      "a\r\nb\tc\rd",
      "\xFF\xC3 invalid \xED\xA0\x80",
      "<canStandUp/><!-- & ' \" -->",
      "\xF0\x9F\xA4\x96 \xF0\x9F\xBF\xBE", // beyond the basic plane
      "&#0;&amp;",
      "<![CDATA[",
  };
  const TemporaryFolder folder;
  const CapturedLog captured;
  for (const std::string& text : texts)
  {
    PackageInfo package;
    package.setUuid(text);
    package.setName(text, text);
    package.setDescription(text, "en");
    package.addSupportedLanguage(text);
    package.addExecutableFile(text);
    package.addService({text, text, false});
    vesk::BehaviorInfo behavior;
    behavior.setPath(text);
    behavior.setNature(text);
    behavior.addTag(text, text);
    behavior.addCondition(text, text);
    package.addBehavior(behavior);
    vesk::DialogInfo dialog;
    dialog.setTopic(text, text);
    package.addDialog(dialog);
    const std::string path = folder.path("m.xml");
    ASSERT_TRUE(package.saveToManifestFile(path));
    const ProgramRun run = runProgram("xmllint", {"--noout", QString::fromStdString(path)});
    EXPECT_EQ(run.exitCode, 0) << text << run.err;
    PackageInfo fromFile;
    EXPECT_TRUE(fromFile.loadFromManifestFile(path)) << text;
    PackageInfo fromText;
    EXPECT_TRUE(fromText.loadFromManifestContent(package.saveToManifestContent())) << text;
    EXPECT_EQ(printed(fromFile), printed(fromText));
  }
}

TEST(Writing, BringsConditionsBackUnchanged)
{
  for (const std::string condition : {"a]]>b]]>]]>", "]]", "]]]>>", " ", "<![CDATA[x]]>", "\r\n\t"})
  {
    vesk::BehaviorInfo behavior;
    behavior.addCondition(condition, "go");
    PackageInfo package;
    package.addBehavior(behavior);
    PackageInfo again;
    ASSERT_TRUE(again.loadFromManifestContent(package.saveToManifestContent()));
    EXPECT_THAT(again.behaviors().front().conditions("go"), ElementsAre(condition));
  }
}

TEST(Writing, LeavesOutWhatXmlCannotCarry)
{
  using namespace std::string_literals;
  PackageInfo package;
  package.setUuid("a\x01\xEF\xBF\xBF b\0c"s);
  package.setName("a\x1F\xEF\xBF\xBE b\0c"s, "en");
  EXPECT_THAT(package.saveToManifestContent(),
              testing::AllOf(HasSubstr("uuid=\"a b\""), HasSubstr(">a b</name>")));
}
