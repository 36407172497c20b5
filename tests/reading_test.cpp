// SPDX-License-Identifier: Apache-2.0
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>
#include <package/packageinfo.hpp>

using vesk::PackageInfo;

namespace
{
PackageInfo loaded(const std::string& content)
{
  PackageInfo package;
  EXPECT_TRUE(package.loadFromManifestContent(content));
  return package;
}
} // namespace

TEST(Reading, TakesWhatItKnowsWhereverItStands)
{
  PackageInfo package;
  QFile file(GOLDEN_FILES "/oddities.xml");
  ASSERT_TRUE(package.loadFromManifestFile(file));
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(printed(package), contentOf(GOLDEN_FILES "/oddities.report.txt"));
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
  auto package = filled<PackageInfo>();
  const std::string before = contentIn(package);
  const std::string missing = folder.path("missing.xml");
  const std::string malformed = "<package uuid='x'>\n <names></package>";
  const std::string path = folder.file("malformed.xml", malformed);
  const std::string place = " at line 2, column 18: tag mismatch";
  const std::string unreadable = "/proc/self/mem"; // but it opens
  QFile file(QString::fromStdString(path));
  const auto load = [&](const std::string& from)
  {
    return from == malformed ? package.loadFromManifestContent(from)
           : from == path    ? package.loadFromManifestFile(file)
                             : package.loadFromManifestFile(from);
  };
  for (const auto& [from, end] :
       {std::pair(missing, missing + " for reading"), std::pair(path, path + place),
        std::pair(malformed, malformed + place),
        std::pair(unreadable, unreadable + " at line 1, column 1: unexpected end of file")})
  {
    captured.messages.clear();
    EXPECT_FALSE(load(from));
    EXPECT_FALSE(file.isOpen());
    ASSERT_EQ(captured.messages.size(), 1U);
    const vesk::log::Message& logged = captured.messages.front();
    EXPECT_EQ(logged.text, (from == missing ? "Could not open " : "Syntax error in ") + end);
    EXPECT_EQ(static_cast<int>(logged.level), 2);
    EXPECT_EQ(logged.category, "veskpackage");
    EXPECT_EQ(logged.function,
              from == malformed ? "loadFromManifestContent" : "loadFromManifestFile");
    EXPECT_EQ(logged.file, "");
    EXPECT_EQ(logged.line, 0);
    EXPECT_EQ(contentIn(package), before);
  }
  captured.messages.clear();
  vesk::log::addCategory("veskpackage").setLevel(vesk::log::Level::Fatal);
  EXPECT_FALSE(package.loadFromManifestFile(missing));
  EXPECT_THAT(captured.messages, testing::IsEmpty());
  vesk::log::addCategory("veskpackage").setLevel(vesk::log::Level::Info);
}

TEST(Reading, SurvivesTruncationAtEveryByteAndChangesNothingThen)
{
  const CapturedLog captured;
  const TemporaryFolder folder;
  for (const std::string& path : exampleManifests())
  {
    const std::string manifest = contentOf(path);
    const std::string truncated = folder.file("truncated.xml", manifest);
    PackageInfo package = loaded(manifest);
    const std::string before = package.saveToManifestContent();
    for (std::size_t size = manifest.rfind('>'); size > 0; --size)
    {
      ASSERT_FALSE(package.loadFromManifestContent(manifest.substr(0, size))) << path << size;
      ASSERT_TRUE(QFile::resize(QString::fromStdString(truncated), static_cast<qint64>(size)));
      ASSERT_THROW(vesk::loadManifest(truncated), std::runtime_error) << path << size;
    }
    EXPECT_EQ(package.saveToManifestContent(), before);
  }
}
