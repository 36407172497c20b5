// SPDX-License-Identifier: Apache-2.0
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/packageinfo.hpp>

#include <QRegularExpression>

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

/// The same text for everything.
struct Everywhere : DistinctValues
{
  explicit Everywhere(std::string text) : value(std::move(text)) {}
  std::string text(const std::string&) const { return value; }
  static int length(const std::string&) { return 1; }
  std::vector<std::string> keys() const { return {value, "key"}; }
  std::string value;
};
} // namespace

TEST(Writing, WritesEverySectionInOrderAndLeavesOutWhatIsEmpty)
{
  const TemporaryFolder folder;
  const std::string written = contentOf(GOLDEN_FILES "/oddities.written.xml");
  ASSERT_TRUE(oddPackage().saveToManifestFile(folder.path("é.xml")));
  EXPECT_EQ(contentOf(folder.path("é.xml")), written);

  QFile file(QString::fromStdString(folder.file("long.xml", std::string(100000, 'x'))));
  ASSERT_TRUE(oddPackage().saveToManifestFile(file));
  EXPECT_FALSE(file.isOpen());
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

TEST(Writing, BringsBackOfEveryTextWhatXmlCanCarry)
{
  using namespace std::string_literals;
  const TemporaryFolder folder;
  const std::string path = folder.path("m.xml");
  for (const std::string& text :
       {"a]]>b]]>]]>"s, "]]"s, "\xC2\x80"s, "]]]>>"s, " "s, "\r\n\t"s, "a\r\nb\tc\rd"s,
        "a\x01\x02\x1F\x7F z\0b"s, "<canStandUp/><!-- & ' \" -->&#0;&amp;<![CDATA["s,
        "\xEF\xBB\xBF mark\xEF\xBF\xBE\xEF\xBF\xBF"s,
        "\xF0\x9F\xA4\x96 beyond the basic plane \xF0\x9F\xBF\xBE"s,
        "\xFF\xC3 invalid \xED\xA0\x80"s})
  {
    QString carried = QString::fromUtf8(('x' + text).c_str()).mid(1); // a mark stays behind the "x"
    carried.remove(QRegularExpression(R"([\x01-\x08\x0B\x0C\x0E-\x1F\x{FFFE}\x{FFFF}])"));
    const std::string expected = carried.toStdString();
    const auto package = filled<PackageInfo>(Everywhere(text));
    ASSERT_TRUE(package.saveToManifestFile(path));
    const ProgramRun run = runProgram("xmllint", {"--noout", QString::fromStdString(path)});
    EXPECT_EQ(run.exitCode, 0) << text << run.err;
    PackageInfo read;
    ASSERT_TRUE(read.loadFromManifestFile(path)) << text;
    EXPECT_EQ(read.uuid(), expected);
    EXPECT_THAT(read.behaviors().front().conditions("key"), testing::ElementsAre(expected));
    EXPECT_EQ(read.name("key"), carried.trimmed().isEmpty() ? "" : expected);
    PackageInfo fromText;
    ASSERT_TRUE(fromText.loadFromManifestContent(package.saveToManifestContent())) << text;
    EXPECT_EQ(contentIn(fromText), contentIn(read));
  }
}
