// SPDX-License-Identifier: Apache-2.0
// Both schemas against xmllint: what they take, what they refuse, and what readers make of that.
#include "filledpackage.hpp"
#include "support.hpp"
#include "xmllint.hpp"

#include <package/manifest2/loadmanifest.hpp>

#include <map>
#include <random>
#include <set>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using vesk::PackageInfo;

namespace
{
/// Every element and attribute that a manifest can have.
std::string wholeManifest() { return contentOf(GOLDEN_FILES "/schema/whole.xml"); }

/// Writes what each list of edits in a file makes of a whole manifest. Returns the edits by paths.
std::map<std::string, std::string> writeEdited(const std::string& edits,
                                               const TemporaryFolder& folder)
{
  std::map<std::string, std::string> written;
  std::istringstream lines(contentOf(GOLDEN_FILES "/schema/" + edits));
  for (std::string line; std::getline(lines, line);)
  {
    QString manifest = QString::fromStdString(wholeManifest());
    const QStringList parts = QString::fromStdString(line).split('|');
    for (int i = 1; i + 2 < parts.size(); i += 2)
    {
      EXPECT_TRUE(manifest.contains(parts[i])) << "nothing to edit: " << line;
      manifest.replace(parts[i], parts[i + 1]);
    }
    if (line.front() == '|') // and is no comment
    {
      const std::string name = std::to_string(written.size()) + ".xml";
      written[folder.file(name, manifest.toStdString())] = line;
    }
  }
  return written;
}

std::set<std::string> pathsIn(const std::map<std::string, std::string>& written)
{
  std::set<std::string> paths;
  for (const auto& [path, edits] : written)
  {
    paths.insert(path);
  }
  return paths;
}

/// Texts as people write them and worse. Only texts that a package can do without may be empty.
struct RandomValues : KeptValues
{
  explicit RandomValues(unsigned seed) : random(seed) {}
  bool flag() { return below(2) == 1; }
  int length(const std::string&) { return static_cast<int>(below(4)); }
  std::string text(const std::string& member)
  {
    static const std::string needed = "uuid version path topicName locale name execStart "
                                      "executableFiles supportedLanguages descriptionLanguages";
    static const std::array<std::string, 5> texts{"", "a Z\n7\t", "&<b>]]>\"'", "é日本😀\x01\uFFFE",
                                                  "x"};
    const std::string& text = texts[below(texts.size())];
    return member == "permissions"                                    ? KeptValues::text(member)
           : text.empty() && needed.find(member) != std::string::npos ? "x"
                                                                      : text;
  }
  std::vector<std::string> keys()
  {
    std::vector<std::string> some{"zh-Hant", "en_US", "\"<&>é", "de"};
    some.resize(below(5));
    return some;
  }
  std::size_t below(std::size_t end) { return random() % end; }
  std::mt19937 random;
};

/// What each way of reading makes of a manifest.
std::vector<std::string> readingsOf(const std::string& path)
{
  PackageInfo fromFile;
  EXPECT_TRUE(fromFile.loadFromManifestFile(path));
  PackageInfo fromContent;
  EXPECT_TRUE(fromContent.loadFromManifestContent(contentOf(path)));
  const vesk::PackageInfo2 second = vesk::loadManifest(path);
  return {contentIn(fromFile), contentIn(fromContent), contentIn(PackageInfo(second)),
          second.web().path};
}
} // namespace

TEST(Schema, TakesExamplesAndWhatTheLibraryWrites)
{
  const TemporaryFolder folder;
  const std::vector<std::string> examples = exampleManifests();
  std::set<std::string> paths(examples.begin(), examples.end());
  for (unsigned seed = 0; seed < 100; ++seed)
  {
    const std::string path = folder.path(std::to_string(seed) + ".xml");
    paths.insert(path);
    ASSERT_TRUE(filled<PackageInfo>(RandomValues(seed)).saveToManifestFile(path));
  }
  for (const Schema& schema : schemas)
  {
    EXPECT_THAT(refusedBy(schema, paths), IsEmpty());
  }
}

TEST(Schema, TakesOtherFormsOfTheSame)
{
  const TemporaryFolder folder;
  const auto forms = writeEdited("forms.txt", folder);
  for (const auto& [path, edits] : forms)
  {
    EXPECT_EQ(readingsOf(path), readingsOf(GOLDEN_FILES "/schema/whole.xml")) << edits;
  }
  for (const Schema& schema : schemas)
  {
    EXPECT_THAT(refusedBy(schema, pathsIn(forms)), IsEmpty());
  }
}

TEST(Schema, RefusesWhatReadersSkipAndWhatMakesNoSense)
{
  const TemporaryFolder folder;
  const auto faults = writeEdited("faults.txt", folder);
  EXPECT_GT(faults.size(), 50U);
  for (const Schema& schema : schemas)
  {
    std::map<std::string, std::string> taken = faults;
    for (const auto& [path, messages] : refusedBy(schema, pathsIn(faults)))
    {
      EXPECT_THAT(messages, Not(HasSubstr("parser error")));
      taken.erase(path);
    }
    EXPECT_THAT(taken, IsEmpty()) << schema.path.toStdString();
  }
}
