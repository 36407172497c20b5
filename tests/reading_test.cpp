// SPDX-License-Identifier: Apache-2.0
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
  const CapturedLog captured;
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestFile(GOLDEN_FILES "/oddities.xml"));
  const std::string before = package.saveToManifestContent();

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
  EXPECT_FALSE(package.loadFromManifestFile("/proc/self/mem")); // opens, but cannot be read
  EXPECT_EQ(captured.messages.at(4).text,
            "Syntax error in /proc/self/mem at line 1, column 1: unexpected end of file");
  EXPECT_EQ(package.saveToManifestContent(), before);

  vesk::log::addCategory("veskpackage").setLevel(vesk::log::Level::Fatal);
  EXPECT_FALSE(package.loadFromManifestFile(missing));
  EXPECT_EQ(captured.messages.size(), 5U);
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
