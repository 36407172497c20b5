// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

using testing::ElementsAre;
using testing::Pair;
using vesk::PackageInfo;

namespace
{
PackageInfo loaded(const std::string& content)
{
  PackageInfo package;
  EXPECT_TRUE(package.loadFromManifestContent(content));
  return package;
}

vesk::BehaviorInfo behaviorFrom(const std::string& children)
{
  return loaded("<p><contents><behaviorContent path='b'>" + children +
                "</behaviorContent></contents></p>")
      .behaviors()
      .front();
}

void expectMessage(const vesk::log::Message& message, const std::string& text,
                   const std::string& function)
{
  EXPECT_EQ(message.text, text);
  EXPECT_EQ(static_cast<int>(message.level), 2);
  EXPECT_EQ(message.category, "veskpackage");
  EXPECT_EQ(message.function, function);
  EXPECT_EQ(message.file, "");
  EXPECT_EQ(message.line, 0);
}
} // namespace

TEST(Reading, SetsEveryRootAttributeAlsoWhereItIsMissing)
{
  PackageInfo package = loaded("<any uuid='u' version='v' author='a' organization='o' date='d' "
                               "typeVersion='t' channel='c' installer='i' path='p'/>");
  EXPECT_EQ(package.uuid() + package.version() + package.author() + package.organization() +
                package.date() + package.typeVersion() + package.channel(),
            "uvaodtc");
  EXPECT_EQ(package.installer() + package.path(), "");
  package.setPath("kept");
  ASSERT_TRUE(package.loadFromManifestContent("<package uuid='x'/>"));
  EXPECT_EQ(package.uuid(), "x");
  EXPECT_EQ(package.version(), "");
  EXPECT_EQ(package.path(), "kept");
}

TEST(Reading, TakesEveryChildOfTextSectionsWhateverItsName)
{
  const PackageInfo package =
      loaded("<p><names><name lang='en'>a</name><any lang='en'>b<![CDATA[<c]]><d>e</d></any>"
             "</names><names><name>x</name><!-- comment --></names>"
             "<descriptions><description lang='fr'>&lt;é</description></descriptions>"
             "<Names><name lang='de'/></Names></p>");
  EXPECT_THAT(package.names(), ElementsAre(Pair("", ""), Pair("en", "b<ce")));
  EXPECT_THAT(package.descriptions(), ElementsAre(Pair("fr", "<é")));
}

TEST(Reading, TakesServicesFilesAndRequirementsByName)
{
  const PackageInfo package = loaded(R"(<p>
    <services><!-- c --><service name='n' execStart='e' autorun='true'/><service autorun='TRUE'/>
      <service autorun='1'/><Service/></services>
    <executableFiles><file path='bin/a'/><file/><other path='x'/></executableFiles>
    <requirements><robotRequirement model='m' minHeadVersion='1' maxHeadVersion='2'
      minBodyVersion='3' maxBodyVersion='4'/><mirelRequirement minVersion='5' maxVersion='6'/>
      <other/><robotRequirement model='n'/></requirements>
    <web path='x'/></p>)");
  ASSERT_EQ(package.services().size(), 3U);
  const vesk::PackageService& service = package.services().front();
  EXPECT_EQ(service.name + service.execStart, "ne");
  std::vector<bool> autoRuns;
  for (const vesk::PackageService& each : package.services())
  {
    autoRuns.push_back(each.autoRun);
  }
  EXPECT_THAT(autoRuns, ElementsAre(true, false, false));
  EXPECT_THAT(package.executableFiles(), ElementsAre("bin/a", ""));
  ASSERT_EQ(package.robotRequirements().size(), 2U);
  const vesk::RobotRequirement& robot = package.robotRequirements().front();
  EXPECT_EQ(robot.model + robot.minHeadVersion + robot.maxHeadVersion + robot.minBodyVersion +
                robot.maxBodyVersion,
            "m1234");
  EXPECT_EQ(package.robotRequirements().back().model, "n");
  EXPECT_EQ(package.mirelRequirements().front().minVersion, "5");
  EXPECT_EQ(package.mirelRequirements().front().maxVersion, "6");
}

TEST(Reading, DropsRepeatedLanguagesAlsoAmongThoseHeldBefore)
{
  PackageInfo package;
  package.addSupportedLanguage("fr");
  ASSERT_TRUE(package.loadFromManifestContent(
      "<p><supportedLanguages><language>en</language><language>fr</language><x>en</x><!-- c -->"
      "<?pi?></supportedLanguages><descriptionLanguages><l>de</l></descriptionLanguages></p>"));
  EXPECT_THAT(package.supportedLanguages(), ElementsAre("fr", "en", ""));
  EXPECT_THAT(package.descriptionLanguages(), ElementsAre("de"));
}

TEST(Reading, ReadsABehaviorAndSkipsWhatItDoesNotKnow)
{
  const vesk::BehaviorInfo behavior = behaviorFrom(
      "<userRequestable>false</userRequestable><nature>solitary</nature><unknown/>"
      "<names><name lang='en'>a</name><name lang='en'>b</name></names>"
      "<descriptions><d lang='en'>c</d></descriptions>"
      "<tags><tag lang='en'>t</tag><tag lang='en'/><tag lang='en'>t</tag></tags>"
      "<triggerSentences><s lang='fr'>s</s></triggerSentences>"
      "<loadingResponses><s>r</s></loadingResponses>"
      "<autonomous><condition purpose='go'><![CDATA[a < b && c]]></condition></autonomous>"
      "<permissions><canSitDown/><canSitDown/><jump/><canRunOnPod/></permissions>");
  EXPECT_EQ(behavior.path(), "b");
  EXPECT_TRUE(behavior.isUserRequestable());
  EXPECT_EQ(behavior.nature(), "solitary");
  EXPECT_THAT(behavior.names(), ElementsAre(Pair("en", "b")));
  EXPECT_THAT(behavior.descriptions(), ElementsAre(Pair("en", "c")));
  EXPECT_THAT(behavior.tags("en"), ElementsAre("t", "", "t"));
  EXPECT_THAT(behavior.triggerSentences("fr"), ElementsAre("s"));
  EXPECT_THAT(behavior.loadingResponses(""), ElementsAre("r"));
  EXPECT_THAT(behavior.conditions("go"), ElementsAre("a < b && c"));
  EXPECT_THAT(behavior.permissions(), ElementsAre("canSitDown", "canRunOnPod"));
  EXPECT_FALSE(behaviorFrom("").isUserRequestable());
}

TEST(Reading, AppendsContentWhateverItHoldsAndAddsToWhatIsThere)
{
  const std::string manifest =
      "<p uuid='u'><names><n lang='en'>a</n></names><supportedLanguages><l>en</l>"
      "</supportedLanguages><contents><behaviorContent/><webContent path='w'/><dialogContent/>"
      "<languageContent/><behaviorContent path='second'/></contents>"
      "<executableFiles><file path='f'/></executableFiles></p>";
  PackageInfo package = loaded(manifest);
  ASSERT_TRUE(package.loadFromManifestContent(manifest));
  EXPECT_EQ(package.behaviors().size(), 4U);
  EXPECT_EQ(package.behaviors().back().path(), "second");
  EXPECT_EQ(package.dialogs().size(), 2U);
  EXPECT_EQ(package.languages().size(), 2U);
  EXPECT_EQ(package.executableFiles().size(), 2U);
  EXPECT_THAT(package.supportedLanguages(), ElementsAre("en"));
  EXPECT_EQ(package.names().size(), 1U);
}

TEST(Reading, ProcessesNamespacesInTextsButNotInFiles)
{
  const std::string manifest = "<p xmlns:x='urn:x' x:uuid='u' version='1'/>";
  EXPECT_EQ(loaded(manifest).uuid(), "u");
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestFile(TemporaryFolder().file("é.xml", manifest)));
  EXPECT_EQ(package.uuid(), "");
  EXPECT_EQ(package.version(), "1");
}

TEST(Reading, StopsAtTheFirstNul)
{
  using namespace std::string_literals;
  EXPECT_EQ(loaded("<p uuid='u'/>\0 no xml"s).uuid(), "u");
  EXPECT_EQ(loaded("<p uuid='a&#0;b'/>").uuid(), "a");
}

TEST(Reading, LogsWhyAFileOrTextCannotBeRead)
{
  const TemporaryFolder folder;
  CapturedLog captured;
  PackageInfo package;
  package.setUuid("kept");
  package.addBehavior({});
  const std::string before = printed(package);

  const std::string missing = folder.path("missing.xml");
  EXPECT_FALSE(package.loadFromManifestFile(missing));
  expectMessage(captured.messages.at(0), "Could not open " + missing + " for reading",
                "loadFromManifestFile");

  const std::string malformed = "<package uuid='x'>\n <names></package>";
  const std::string place = " at line 2, column 18: tag mismatch";
  const std::string path = folder.file("malformed.xml", malformed);
  EXPECT_FALSE(package.loadFromManifestFile(path));
  expectMessage(captured.messages.at(1), "Syntax error in " + path + place, "loadFromManifestFile");
  QFile file(QString::fromStdString(path));
  EXPECT_FALSE(package.loadFromManifestFile(file));
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(captured.messages.at(2).text, captured.messages.at(1).text);
  EXPECT_FALSE(package.loadFromManifestContent(malformed));
  expectMessage(captured.messages.at(3), "Syntax error in " + malformed + place,
                "loadFromManifestContent");
  EXPECT_EQ(captured.messages.size(), 4U);
  EXPECT_EQ(printed(package), before);

  vesk::log::addCategory("veskpackage").setLevel(vesk::log::Level::Fatal);
  EXPECT_FALSE(package.loadFromManifestFile(missing));
  EXPECT_EQ(captured.messages.size(), 4U);
  vesk::log::addCategory("veskpackage").setLevel(vesk::log::Level::Info);
}

TEST(Reading, SurvivesTruncationAtEveryByteAndChangesNothingThen)
{
  const CapturedLog captured;
  for (const std::string& path : exampleManifests())
  {
    const std::string manifest = contentOf(path);
    PackageInfo package;
    EXPECT_TRUE(package.loadFromManifestFile(path));
    const std::string before = printed(package);
    const std::size_t rootEnd = manifest.rfind('>');
    for (std::size_t size = 0; size <= rootEnd; ++size)
    {
      ASSERT_FALSE(package.loadFromManifestContent(manifest.substr(0, size))) << path << size;
    }
    EXPECT_EQ(printed(package), before);
  }
}
