// SPDX-License-Identifier: Apache-2.0
// The second reader, beside the first.
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>

#include <QDomDocument>

#include <nlohmann/json.hpp>
#include <utility>

using namespace vesk;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
using Lines = std::vector<std::string>;

/// What a manifest means to both readers.
struct Compared
{
  std::string manifest; ///< the text, or the path of a file
  /// Where the packages differ, as "place: with the first reader | with the second".
  Lines differences;
  /// What the sections hold that gets into no package, as "place: value".
  Lines onlyInSections;
};

std::vector<Compared> comparedManifests()
{
  const std::string examples = EXAMPLE_MANIFESTS "/";
  return {
      // Only the first reads description languages, only the second web content.
      {examples + "greeting.xml",
       {R"(/descriptionLanguages/0: "en_US" | nothing)",
        R"(/descriptionLanguages/1: "es_ES" | nothing)"},
       {}},
      {examples + "language-pack-italian.xml",
       {R"(/descriptionLanguages/0: "en_US" | nothing)",
        R"(/descriptionLanguages/1: "it_IT" | nothing)"},
       {}},
      {examples + "minimal.xml", {}, {}},
      {examples + "museum-guide.xml",
       {R"(/descriptionLanguages/0: "en_US" | nothing)",
        R"(/descriptionLanguages/1: "fr_FR" | nothing)",
        R"(/descriptionLanguages/2: "ja_JP" | nothing)"},
       {}},
      {examples + "office-assistant.xml",
       {R"(/descriptionLanguages/0: "en_US" | nothing)",
        R"(/descriptionLanguages/1: "de_DE" | nothing)"},
       {R"(/contents/web/path: "web/tablet")"}},
      {GOLDEN_FILES "/oddities.xml",
       {R"(/descriptionLanguages/0: "de" | nothing)", R"(/descriptionLanguages/1: "en" | nothing)",
        R"(/langToName/de: "" | nothing)", R"(/langToName/en: "b<ce" | nothing)",
        "/services/2/autoRun: false | true"},
       {R"(/contents/web/path: "skipped")"}},
      {"<p><contents><webContent path='a'/><webContent path='b'/></contents></p>",
       {},
       {R"(/contents/web/path: "b")"}},
      // "autorun" is lower case; "1" counts for the second reader only.
      {"<p><services><service autorun='1'/><service autorun='true'/><service autoRun='1'/>"
       "<service autorun='TRUE'/><service autorun='yes'/><service/></services></p>",
       {"/services/0/autoRun: false | true"},
       {}},
      // A package has each language once.
      {"<p><supportedLanguages><l>a</l><l>b</l><l>a</l></supportedLanguages></p>",
       {},
       {R"(/supportedLanguages/2: "a")"}},
      // The first adds up what sections hold, for the second the last one counts, even an empty one.
      {"<p><names><n lang='a'>x</n></names><names><n lang='b'>y</n></names><services><service/>"
       "</services><services/></p>",
       {R"(/langToName/a: "x" | nothing)", "/services/0/autoRun: false | nothing",
        R"(/services/0/execStart: "" | nothing)", R"(/services/0/name: "" | nothing)"},
       {}},
      {"<p><contents><dialogContent/></contents><contents/></p>",
       {R"(/dialogs/0/topicName: "" | nothing)", R"(/dialogs/0/typeVersion: "" | nothing)"},
       {"/contents: null"}},
      // Processing instructions count by their target, for both.
      {"<p><supportedLanguages><l>a</l></supportedLanguages><?supportedLanguages?></p>",
       {R"(/supportedLanguages/0: "a" | nothing)"},
       {}},
      // Children that are no elements give empty entries, for both.
      {"<p><names><!----></names><descriptions>text</descriptions><executableFiles><?file?>"
       "</executableFiles><supportedLanguages><!----></supportedLanguages></p>",
       {},
       {}},
  };
}

/// Every value by its place.
nlohmann::json flat(const std::string& json) { return nlohmann::json::parse(json).flatten(); }

Lines differences(const PackageInfo& first, const PackageInfo& second)
{
  const nlohmann::json left = flat(contentIn(first));
  const nlohmann::json right = flat(contentIn(second));
  nlohmann::json places = left;
  places.update(right);
  Lines lines;
  for (const auto& [place, any] : places.items())
  {
    const auto at = [&key = place](const nlohmann::json& values)
    { return values.value(key, nlohmann::json()).is_null() ? "nothing" : values[key].dump(); };
    if (at(left) != at(right))
    {
      lines.push_back(place + ": " + at(left) + " | " + at(right));
    }
  }
  return lines;
}

/// The message of what \p action throws; empty when it does not.
template <typename Action>
std::string thrown(Action action)
{
  try
  {
    action();
    return {};
  }
  catch (const std::runtime_error& error)
  {
    return error.what();
  }
}
} // namespace

TEST(BothReaders, DifferAsStated)
{
  const TemporaryFolder folder;
  for (const Compared& compared : comparedManifests())
  {
    const bool isText = compared.manifest.front() == '<';
    const std::string path =
        isText ? folder.file("manifest.xml", compared.manifest) : compared.manifest;
    PackageInfo package;
    ASSERT_TRUE(package.loadFromManifestFile(path));
    const PackageInfo2 info = loadManifest(path);
    EXPECT_EQ(differences(package, PackageInfo(info)), compared.differences) << compared.manifest;
    const nlohmann::json inSections = flat(contentIn(info.sections));
    Lines more;
    for (const auto& [place, value] : inSections.items())
    {
      more.push_back(place + ": " + value.dump());
    }
    EXPECT_THAT(more, testing::IsSupersetOf(compared.onlyInSections)) << compared.manifest;
  }
}

TEST(PackageInfo2, HoldsSectionsAsTyped)
{
  const PackageInfo2 info = loadManifest(GOLDEN_FILES "/oddities.xml");
  EXPECT_EQ(info.uuid + info.version + info.author + info.channel + info.organization + info.date +
                info.typeVersion,
            "u & \"v\"1Zoëc\ndodt");
  EXPECT_EQ(info.installer + info.path, "");
  using Texts = std::map<std::string, std::string>;
  using Requirements = std::pair<std::vector<RobotRequirement>, std::vector<MirelRequirement>>;
  EXPECT_EQ(info.sections.size(), 7U); // and these are:
  EXPECT_EQ(info.sections.at("names").as<Texts>().at("fr"), "<a> & ]]> \"b\"");
  EXPECT_EQ(info.sections.at("descriptions").as<Texts>(), (Texts{{"en", ""}}));
  EXPECT_EQ(info.sections.at("services").as<std::vector<PackageService>>().size(), 3U);
  EXPECT_THAT(info.sections.at("executableFiles").as<std::vector<std::string>>(),
              ElementsAre("bin/a", "", "bin/a"));
  EXPECT_EQ(info.sections.at("requirements").as<Requirements>().second.at(1).minVersion, "7");
  EXPECT_THAT(info.sections.at("supportedLanguages").as<std::vector<std::string>>(),
              ElementsAre("en", "fr", "en", "", ""));
  const auto& contents = info.sections.at("contents").as<std::map<std::string, AnyValue>>();
  EXPECT_EQ(contents.size(), 4U);
  EXPECT_EQ(contents.at("behaviors").as<std::vector<BehaviorInfo>>().at(1).path(), "");
  EXPECT_EQ(contents.at("dialogs").as<std::vector<DialogInfo>>().at(0).topicName(), "t");
  EXPECT_EQ(contents.at("languages").as<std::vector<LanguageInfo>>().at(0).path(), "p");
  EXPECT_EQ(contents.at("web").as<WebInfo>().path, "skipped");
  EXPECT_TRUE(loadXmlDocument(QDomDocument()).sections.empty());
}

TEST(PackageInfo2, ReferencesAreToWhatIsStoredAndConstAccessorsCopy)
{
  PackageInfo2 info = loadManifest(GOLDEN_FILES "/oddities.xml");
  auto& contents = info.sections.at("contents").as<std::map<std::string, AnyValue>>();
  EXPECT_EQ(&info.contents(), &contents);
  EXPECT_EQ(&info.behaviors(), contents.at("behaviors").reference().address());
  EXPECT_EQ(&info.dialogs(), contents.at("dialogs").reference().address());
  EXPECT_EQ(&info.languages(), contents.at("languages").reference().address());
  EXPECT_EQ(&info.web(), contents.at("web").reference().address());

  const PackageInfo2 copy = info;
  info.behaviors().front().setPath("changed");
  info.dialogs().clear();
  info.languages().clear();
  info.web().path = "changed";
  EXPECT_EQ(copy.behaviors().front().path() + copy.web().path, "bskipped");
  EXPECT_EQ(copy.dialogs().size() + copy.languages().size(), 4U);
  const PackageInfo2 moved = std::move(info);
  EXPECT_EQ(moved.behaviors().front().path() + moved.web().path, "changedchanged");
  EXPECT_EQ(moved.contents().size(), 4U);
}

TEST(PackageInfo2, MakesEmptyListsButNoWebContent)
{
  PackageInfo2 info;
  EXPECT_EQ(std::as_const(info).contents().size() + std::as_const(info).behaviors().size() +
                std::as_const(info).dialogs().size() + std::as_const(info).languages().size(),
            0U);
  EXPECT_EQ(std::as_const(info).web().path, "");
  EXPECT_THAT(info.sections, IsEmpty());
  EXPECT_EQ(info.behaviors().size() + info.dialogs().size() + info.languages().size(), 0U);
  EXPECT_EQ(info.contents().size(), 3U);
  for (int i = 0; i < 2; ++i)
  {
    EXPECT_EQ(thrown([&info] { info.web(); }), "Type mismatch");
    EXPECT_FALSE(info.contents().at("web").isValid());
  }
  EXPECT_THROW(std::as_const(info).web(), ConversionError);
  EXPECT_EQ(contentIn(PackageInfo(info)), contentIn(PackageInfo()));
  info.contents()["web"] = WebInfo{"html"};
  EXPECT_EQ(info.web().path, "html");
}

TEST(PackageInfo2, TakesOtherTypesByValueOnly)
{
  PackageInfo2 info;
  info.contents()["behaviors"] = std::list<BehaviorInfo>(2);
  info.contents()["web"] = std::map<std::string, std::string>{{"path", "html"}};
  EXPECT_EQ(std::as_const(info).behaviors().size(), 2U);
  EXPECT_EQ(std::as_const(info).web().path, "html");
  EXPECT_EQ(thrown([&info] { info.behaviors(); }), "Type mismatch");
  EXPECT_EQ(thrown([&info] { info.web(); }), "Type mismatch");
  info.sections["contents"] = "text";
  EXPECT_EQ(thrown([&info] { info.dialogs(); }), "Type mismatch");
  EXPECT_THROW(std::as_const(info).dialogs(), ConversionError);
  EXPECT_THROW(PackageInfo{info}, ConversionError);
}

TEST(PackageInfo2, ConvertsToAPackageWhateverTheListsAre)
{
  auto package = filled<PackageInfo>();
  package.clearDescriptionLanguages();
  PackageInfo2 info{package.uuid(),         package.version(),
                    package.author(),       package.channel(),
                    package.organization(), package.date(),
                    package.typeVersion(),  package.installer(),
                    package.path(),         {}};
  info.sections = {
      {"names", package.names()},
      {"descriptions", package.descriptions()},
      {"services", package.services()},
      {"executableFiles", package.executableFiles()},
      {"requirements", std::pair(package.robotRequirements(), package.mirelRequirements())},
      {"supportedLanguages", package.supportedLanguages()},
      {"unknown", 1}};
  info.contents() = {{"behaviors", package.behaviors()},
                     {"dialogs", package.dialogs()},
                     {"languages", package.languages()},
                     {"web", AnyValue()},
                     {"unknown", 1}};
  EXPECT_EQ(contentIn(PackageInfo(info)), contentIn(package));
}

TEST(LoadManifest, ThrowsWhatItLogs)
{
  const TemporaryFolder folder;
  const CapturedLog captured;
  const std::string missing = folder.path("missing.xml");
  const std::string malformed = folder.file("é.xml", "<package>\n <names></package>");
  const Lines messages{"Could not open " + missing + " for reading.",
                       "Syntax error in " + malformed + ":2:18: tag mismatch"};
  EXPECT_EQ(thrown([&missing] { loadManifest(missing); }), messages[0]);
  EXPECT_EQ(thrown([&malformed] { loadManifest(malformed); }), messages[1]);
  ASSERT_EQ(captured.messages.size(), 2U);
  for (std::size_t i = 0; i < 2; ++i)
  {
    EXPECT_EQ(captured.messages[i].text, messages[i]);
    EXPECT_EQ(captured.messages[i].level, log::Level::Error);
    EXPECT_EQ(captured.messages[i].category, "vesk.package.info");
    EXPECT_EQ(captured.messages[i].function, "loadManifest");
  }
  log::addCategory("vesk.package.info").setLevel(log::Level::Fatal);
  EXPECT_EQ(thrown([&missing] { loadManifest(missing); }), messages[0]);
  EXPECT_EQ(captured.messages.size(), 2U);
  log::addCategory("vesk.package.info").setLevel(log::Level::Info);
}
