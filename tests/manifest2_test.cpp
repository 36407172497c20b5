// SPDX-License-Identifier: Apache-2.0
// The second reader, beside the first.
#include "merged.hpp"
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>

#include <QDomDocument>

#include <utility>

using namespace vesk;
using testing::IsEmpty;

namespace
{
using Lines = std::vector<std::string>;

/// Where packages differ, as "place: in the first | in the second"; what is empty is null.
Lines differences(const Json& first, const Json& second)
{
  const Json left = first.flatten();
  const Json right = second.flatten();
  Json places = left;
  places.update(right);
  Lines lines;
  for (const auto& [place, any] : places.items())
  {
    const Json inFirst = left.value(place, Json());
    const Json inSecond = right.value(place, Json());
    if (inFirst != inSecond)
    {
      lines.push_back(place + ": " + inFirst.dump() + " | " + inSecond.dump());
    }
  }
  return lines;
}
} // namespace

TEST(BothReaders, ReadAllThatIsWrittenAndAddItToWhatIsThere)
{
  const TemporaryFolder folder;
  const std::string path = folder.path("m.xml");
  const auto written = filled<PackageInfo, KeptValues>();
  ASSERT_TRUE(written.saveToManifestFile(path));
  PackageInfo2 info = loadManifest(path);
  info.installer = written.installer();
  info.path = written.path();
  info.sections["unknown"] = 1;
  info.sections["supportedLanguages"] = written.supportedLanguages(); // a list, and no vector
  info.contents()["dialogs"] = written.dialogs();
  Json expected = heldIn(written);
  expected["descriptionLanguages"].clear();
  EXPECT_THAT(differences(heldIn(PackageInfo(info)), expected), IsEmpty());

  Json all = heldIn(written);
  all["installer"] = all["path"] = "";
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestFile(path));
  EXPECT_THAT(differences(heldIn(package), all), IsEmpty());
  package = filled<PackageInfo>(DistinctValues(1000));
  for (const auto& [manifest, added] :
       {std::pair(contentOf(path), all), std::pair(std::string("<p/>"), heldIn(PackageInfo()))})
  {
    expected = merged(heldIn(package), added);
    expected["installer"] = package.installer();
    expected["path"] = package.path();
    ASSERT_TRUE(package.loadFromManifestContent(manifest));
    EXPECT_THAT(differences(heldIn(package), expected), IsEmpty());
  }
}

// golden/readers.json states every difference, and some of what sections hold.
TEST(BothReaders, DifferAsStated)
{
  const TemporaryFolder folder;
  for (const Json& stated : Json::parse(contentOf(GOLDEN_FILES "/readers.json")))
  {
    SCOPED_TRACE(stated["what"].get<std::string>());
    const std::string path = stated.contains("file")
                                 ? PROJECT_FOLDER + stated["file"].get<std::string>()
                                 : folder.file("m.xml", stated["manifest"]);
    PackageInfo package;
    ASSERT_TRUE(package.loadFromManifestFile(path));
    const PackageInfo2 info = loadManifest(path);
    EXPECT_EQ(differences(heldIn(package), heldIn(PackageInfo(info))),
              stated["differences"].get<Lines>());
    const Json sections = heldIn(info.sections).flatten();
    Lines inSections;
    for (const auto& [place, value] : sections.items())
    {
      inSections.push_back(place + ": " + value.dump());
    }
    const auto expected = stated["inSections"].get<Lines>();
    EXPECT_THAT(inSections, testing::IsSupersetOf(expected));
    EXPECT_TRUE(stated.contains("file") || inSections.size() == expected.size());
  }
}

TEST(PackageInfo2, HoldsSectionsAsTyped)
{
  const PackageInfo2 info = loadManifest(GOLDEN_FILES "/oddities.xml");
  using Texts = std::map<std::string, std::string>;
  using Requirements = std::pair<std::vector<RobotRequirement>, std::vector<MirelRequirement>>;
  EXPECT_EQ(info.sections.size(), 7U); // and these are, beside the contents:
  EXPECT_TRUE(info.sections.at("names").is<Texts>());
  EXPECT_TRUE(info.sections.at("descriptions").is<Texts>());
  EXPECT_TRUE(info.sections.at("services").is<std::vector<PackageService>>());
  EXPECT_TRUE(info.sections.at("executableFiles").is<std::vector<std::string>>());
  EXPECT_TRUE(info.sections.at("requirements").is<Requirements>());
  EXPECT_TRUE(info.sections.at("supportedLanguages").is<std::vector<std::string>>());
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
  EXPECT_EQ(copy.behaviors().front().path(), "b");
  EXPECT_EQ(copy.web().path, "skipped");
  EXPECT_EQ(copy.dialogs().size(), 2U);
  EXPECT_EQ(copy.languages().size(), 2U);
  const PackageInfo2 moved = std::move(info);
  EXPECT_EQ(moved.behaviors().front().path(), "changed");
  EXPECT_EQ(moved.web().path, "changed");
  EXPECT_EQ(moved.contents().size(), 4U);
}

TEST(PackageInfo2, MakesEmptyListsButNoWebContent)
{
  PackageInfo2 info;
  const PackageInfo2& unchanged = info;
  EXPECT_THAT(unchanged.contents(), IsEmpty());
  EXPECT_THAT(unchanged.behaviors(), IsEmpty());
  EXPECT_THAT(unchanged.dialogs(), IsEmpty());
  EXPECT_THAT(unchanged.languages(), IsEmpty());
  EXPECT_EQ(unchanged.web().path, "");
  EXPECT_THAT(info.sections, IsEmpty());
  EXPECT_THAT(info.behaviors(), IsEmpty());
  EXPECT_THAT(info.dialogs(), IsEmpty());
  EXPECT_THAT(info.languages(), IsEmpty());
  EXPECT_EQ(heldIn(info.contents()),
            Json::parse(R"({"behaviors":[],"dialogs":[],"languages":[]})"));
  for (int i = 0; i < 2; ++i)
  {
    EXPECT_EQ(thrown<std::runtime_error>([&info] { info.web(); }), "Type mismatch");
    EXPECT_FALSE(info.contents().at("web").isValid());
  }
  EXPECT_THROW(unchanged.web(), ConversionError);
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
  EXPECT_EQ(thrown<std::runtime_error>([&info] { info.behaviors(); }), "Type mismatch");
  EXPECT_EQ(thrown<std::runtime_error>([&info] { info.web(); }), "Type mismatch");
  info.sections["contents"] = "text";
  EXPECT_EQ(thrown<std::runtime_error>([&info] { info.dialogs(); }), "Type mismatch");
  EXPECT_THROW(std::as_const(info).dialogs(), ConversionError);
  EXPECT_THROW(PackageInfo{info}, ConversionError);
}

TEST(LoadManifest, ThrowsWhatItLogs)
{
  const TemporaryFolder folder;
  const CapturedLog captured;
  const std::string missing = folder.path("missing.xml");
  const std::string malformed = folder.file("é.xml", "<package>\n <names></package>");
  const std::string message = "Could not open " + missing + " for reading.";
  for (const auto& [path, expected] :
       {std::pair(missing, message),
        std::pair(malformed, "Syntax error in " + malformed + ":2:18: tag mismatch"),
        std::pair(std::string("/proc/self/mem"), // opens, but cannot be read
                  std::string("Syntax error in /proc/self/mem:1:1: unexpected end of file"))})
  {
    EXPECT_EQ(thrown<std::runtime_error>([&path = path] { loadManifest(path); }), expected);
    const log::Message& logged = captured.messages.back();
    EXPECT_EQ(logged.level, log::Level::Error);
    EXPECT_EQ(logged.category, "vesk.package.info");
    EXPECT_EQ(logged.function, "loadManifest");
    EXPECT_EQ(logged.text, expected);
  }
  log::addCategory("vesk.package.info").setLevel(log::Level::Fatal);
  EXPECT_EQ(thrown<std::runtime_error>([&missing] { loadManifest(missing); }), message);
  EXPECT_EQ(captured.messages.size(), 3U);
  log::addCategory("vesk.package.info").setLevel(log::Level::Info);
}
