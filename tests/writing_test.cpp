// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

using testing::HasSubstr;
using vesk::PackageInfo;

void replaceManifest(const PackageInfo& package, const std::string& path); // in docs/library.md

namespace
{
PackageInfo oddPackage()
{
  PackageInfo package;
  EXPECT_TRUE(package.loadFromManifestFile(GOLDEN_FILES "/oddities.xml"));
  package.setPath("not written");
  package.setInstaller("not written");
  return package;
}
} // namespace

TEST(Writing, WritesEverySectionInOrderAndLeavesOutWhatIsEmpty)
{
  const TemporaryFolder folder;
  const std::string written = contentOf(GOLDEN_FILES "/oddities.written.xml");
  ASSERT_TRUE(oddPackage().saveToManifestFile(folder.path("é.xml")));
  EXPECT_EQ(contentOf(folder.path("é.xml")), written);

  struct CountingFile : QFile
  {
    using QFile::QFile;
    qint64 writeData(const char* data, qint64 size) override
    {
      ++writes;
      return QFile::writeData(data, size);
    }
    int writes = 0;
  } file(QString::fromStdString(folder.file("long.xml", std::string(100000, 'x'))));
  ASSERT_TRUE(oddPackage().saveToManifestFile(file));
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(file.writes, 1); // and not one a line
  EXPECT_EQ(contentOf(folder.path("long.xml")), written);

  // Files are indented by two, texts by one.
  EXPECT_EQ(oddPackage().saveToManifestContent(), contentOf(GOLDEN_FILES "/oddities.content.xml"));
}

TEST(Writing, AsTheGuideShowsReplacesAFileByTheSameBytes)
{
  const TemporaryFolder folder;
  const std::string path = folder.file("m.xml", "old");
  ASSERT_TRUE(QFile::link("m.xml", QString::fromStdString(folder.path("link.xml"))));
  replaceManifest(oddPackage(), folder.path("link.xml"));
  EXPECT_EQ(contentOf(path), contentOf(GOLDEN_FILES "/oddities.written.xml"));
  EXPECT_THROW(replaceManifest(oddPackage(), folder.path("missing/m.xml")), std::runtime_error);
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

TEST(Writing, GivesAWellFormedManifestWhateverTheRecordHolds)
{
  const TemporaryFolder folder;
  const std::string path = folder.path("m.xml");
  const CapturedLog captured;
  for (const std::string text :
       {"]]>", "a]]>b]]>]]>", "]]", "]]]>", "\xEF\xBF\xBE\xEF\xBF\xBF", "a\x01\x02\x1F\x7F z",
        "a\r\nb\tc\rd", "\xFF\xC3 invalid \xED\xA0\x80", "<canStandUp/><!-- & ' \" -->",
        "\xF0\x9F\xA4\x96 beyond the basic plane \xF0\x9F\xBF\xBE", "&#0;&amp;", "<![CDATA[",
        "\xEF\xBB\xBF mark"})
  {
    PackageInfo package;
    package.setUuid(text);
    package.setName(text, text);
    package.addSupportedLanguage(text);
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
  for (const std::string condition :
       {"a]]>b]]>]]>", "]]", "]]]>>", " ", "<![CDATA[x]]>", "\r\n\t", "\xEF\xBB\xBF"})
  {
    vesk::BehaviorInfo behavior;
    behavior.addCondition(condition, "go");
    PackageInfo package;
    package.addBehavior(behavior);
    PackageInfo again;
    ASSERT_TRUE(again.loadFromManifestContent(package.saveToManifestContent()));
    EXPECT_THAT(again.behaviors().front().conditions("go"), testing::ElementsAre(condition));
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
