// SPDX-License-Identifier: Apache-2.0
// Both schemas against xmllint: what they take, what they refuse, and what readers make of that.
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>

#include <array>
#include <map>
#include <random>
#include <set>

using testing::HasSubstr;
using testing::IsEmpty;
using vesk::PackageInfo;

namespace
{
/// Every element and attribute that a manifest can have.
std::string wholeManifest() { return contentOf(GOLDEN_FILES "/schema/whole.xml"); }

struct Edit
{
  std::string from;
  std::string to;
};

std::string edited(std::string text, const std::vector<Edit>& edits)
{
  for (const Edit& edit : edits)
  {
    std::size_t at = text.find(edit.from);
    EXPECT_NE(at, std::string::npos) << "nothing to edit: " << edit.from;
    for (; at != std::string::npos; at = text.find(edit.from, at + edit.to.size()))
    {
      text.replace(at, edit.from.size(), edit.to);
    }
  }
  return text;
}

struct Schema
{
  QString option; ///< of xmllint
  QString path;
};

const std::array schemas{Schema{"--relaxng", PROJECT_FOLDER "schema/manifest.rng"},
                         Schema{"--schema", PROJECT_FOLDER "schema/manifest.xsd"}};

/// Those of the files that the schema refuses, with what xmllint says of them.
std::map<std::string, std::string> refusedBy(const Schema& schema,
                                             const std::vector<std::string>& paths)
{
  std::map<std::string, std::string> refused;
  for (const std::string& path : paths)
  {
    const ProgramRun run = runProgram("xmllint", {"--noout", "--nonet", schema.option, schema.path,
                                                  QString::fromStdString(path)});
    if (run.exitCode != 0)
    {
      refused[path] = run.err;
    }
  }
  return refused;
}

/// Texts as people write them and worse. Only texts that a package can do without may be empty.
class RandomValues
{
public:
  explicit RandomValues(unsigned seed) : random(seed) {}

  bool flag() { return below(2) == 1; }

  std::string text(const std::string& member)
  {
    static const std::string needed = "uuid version path topicName locale name execStart "
                                      "executableFiles supportedLanguages descriptionLanguages";
    static const std::array<std::string, 16> pieces{"a",    "Z",   "7",    " ",     "\n", "\t",
                                                    "&",    "<b>", "]]>",  "\"",    "'",  "é",
                                                    "日本", "😀",   "\x01", "\uFFFE"};
    std::string text = needed.find(member) != std::string::npos || flag() ? "x" : "";
    for (unsigned left = below(6); left > 0 && !text.empty(); --left)
    {
      text += pieces[below(pieces.size())];
    }
    return text;
  }

  /// Permissions are no free texts.
  int length(const std::string& member)
  {
    return member == "permissions" ? 0 : static_cast<int>(below(4));
  }

  std::vector<std::string> keys()
  {
    std::vector<std::string> keys;
    for (const char* const key : {"de", "en_US", "ja_JP", "zh-Hant", "\"<&>é"})
    {
      if (flag())
      {
        keys.emplace_back(key);
      }
    }
    return keys;
  }

private:
  unsigned below(std::size_t end) { return static_cast<unsigned>(random() % end); }

  std::mt19937 random;
};

PackageInfo randomPackage(unsigned seed)
{
  auto package = filled<PackageInfo>(RandomValues(seed));
  RandomValues values(seed);
  for (vesk::BehaviorInfo& behavior : package.behaviors())
  {
    for (const std::string& permission : vesk::BehaviorInfo::supportedPermissions())
    {
      if (values.flag())
      {
        behavior.addPermission(permission);
      }
    }
  }
  return package;
}

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
  std::vector<std::string> paths = exampleManifests();
  for (unsigned seed = 0; seed < 100; ++seed)
  {
    paths.push_back(folder.path(std::to_string(seed) + ".xml"));
    ASSERT_TRUE(randomPackage(seed).saveToManifestFile(paths.back()));
  }
  for (const Schema& schema : schemas)
  {
    EXPECT_THAT(refusedBy(schema, paths), IsEmpty());
  }
}

TEST(Schema, TakesOtherFormsOfTheSame)
{
  const std::string names = "<names><name lang='en'>N</name></names>";
  const std::string nature = "<nature>solitary</nature>";
  const std::string web = "<webContent path='w'/>";
  const std::vector<std::vector<Edit>> forms{
      {},
      {{names, ""}, {"</package>", names + "</package>"}},
      {{nature, ""}, {"</permissions>", "</permissions>" + nature}},
      {{web, ""}, {"<contents>", "<contents>" + web}},
      {{"<engine name='e' version='1'/>", ""},
       {"</locale>", "</locale><engine name='e' version='1'/>"}},
      {{"<userRequestable/>", "<userRequestable>\n</userRequestable>"}},
      {{"<file path='f'/>", "<file path='f'> <!-- --> </file>"}},
      {{nature, "<!-- --><nature><![CDATA[soli]]>tary</nature><?some instruction?>"}},
      {{"<package", R"(<?xml-model href="manifest.rng" type="application/xml"
         schematypens="http://relaxng.org/ns/structure/1.0"?><!DOCTYPE package><package)"}},
      {{"<package", R"(<package xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
         xsi:noNamespaceSchemaLocation="nowhere.xsd" xsi:schemaLocation="urn:n nowhere.xsd")"}},
  };
  const TemporaryFolder folder;
  std::vector<std::string> paths;
  for (const std::vector<Edit>& edits : forms)
  {
    const std::string name = std::to_string(paths.size()) + ".xml";
    paths.push_back(folder.file(name, edited(wholeManifest(), edits)));
    EXPECT_EQ(readingsOf(paths.back()), readingsOf(paths.front())) << contentOf(paths.back());
  }
  for (const Schema& schema : schemas)
  {
    EXPECT_THAT(refusedBy(schema, paths), IsEmpty());
  }
}

TEST(Schema, RefusesWhatReadersSkipAndWhatMakesNoSense)
{
  const TemporaryFolder folder;
  std::map<std::string, std::string> pathToFault;
  std::vector<std::string> paths;
  std::istringstream faults(contentOf(GOLDEN_FILES "/schema/faults.txt"));
  for (std::string fault; std::getline(faults, fault);)
  {
    if (fault.front() == '|') // and is no comment
    {
      const std::size_t middle = fault.find('|', 1);
      const Edit edit{fault.substr(1, middle - 1),
                      fault.substr(middle + 1, fault.size() - middle - 2)};
      const std::string name = std::to_string(paths.size()) + ".xml";
      paths.push_back(folder.file(name, edited(wholeManifest(), {edit})));
      pathToFault[paths.back()] = fault;
    }
  }
  EXPECT_GT(paths.size(), 50U);
  for (const Schema& schema : schemas)
  {
    std::map<std::string, std::string> taken = pathToFault;
    for (const auto& [path, messages] : refusedBy(schema, paths))
    {
      EXPECT_THAT(messages, HasSubstr("validity error")); // still well-formed
      taken.erase(path);
    }
    EXPECT_THAT(taken, IsEmpty()) << schema.path.toStdString();
  }
}
