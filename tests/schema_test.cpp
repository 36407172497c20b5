// SPDX-License-Identifier: Apache-2.0
// Both schemas against xmllint: what they take, what they refuse, and what readers make of that.
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>

#include <QDomDocument>

#include <array>
#include <map>
#include <random>
#include <set>
#include <utility>

using testing::HasSubstr;
using testing::IsEmpty;
using vesk::PackageInfo;

namespace
{
/// Every element and attribute that a manifest can have.
const std::string wholeManifest = R"(<?xml version='1.0' encoding='UTF-8'?>
<package uuid='u' version='1' author='a' organization='o' date='d' typeVersion='1.0' channel='c'>
  <names><name lang='en'>N</name></names>
  <descriptions><description lang='en'>D</description></descriptions>
  <supportedLanguages><language>en</language></supportedLanguages>
  <descriptionLanguages><language>de</language></descriptionLanguages>
  <contents>
    <behaviorContent path='b'>
      <userRequestable/>
      <nature>solitary</nature>
      <names><name lang='en'>B</name></names>
      <descriptions><description lang='en'>E</description></descriptions>
      <tags><tag lang='en'>t</tag></tags>
      <triggerSentences><sentence lang='en'>s</sentence></triggerSentences>
      <loadingResponses><sentence lang='en'>r</sentence></loadingResponses>
      <autonomous><condition purpose='start'><![CDATA[a < b]]></condition></autonomous>
      <permissions><canRunInSleep/><canRunOnPod/><canStandUp/><canSitDown/></permissions>
    </behaviorContent>
    <dialogContent topicName='t' typeVersion='1.0'><topic language='en' path='t'/></dialogContent>
    <languageContent path='l'>
      <engine name='e' version='1'/>
      <locale>it</locale>
      <names><name lang='en'>L</name></names>
    </languageContent>
    <webContent path='w'/>
  </contents>
  <requirements>
    <robotRequirement model='m' minHeadVersion='1' maxHeadVersion='2' minBodyVersion='3' maxBodyVersion='4'/>
    <mirelRequirement minVersion='5' maxVersion='6'/>
  </requirements>
  <services><service name='s' execStart='x' autorun='true'/></services>
  <executableFiles><file path='f'/></executableFiles>
</package>
)";

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
  QStringList arguments{"--noout", "--nonet", schema.option, schema.path};
  for (const std::string& path : paths)
  {
    arguments << QString::fromStdString(path);
  }
  const ProgramRun run = runProgram("xmllint", arguments);
  std::map<std::string, std::string> refused;
  std::size_t taken = 0;
  std::string messages;
  std::istringstream lines(run.err);
  for (std::string line; std::getline(lines, line); messages += line + '\n')
  {
    for (const std::string& path : paths)
    {
      if (line == path + " validates")
      {
        ++taken;
        messages.clear();
      }
      else if (line == path + " fails to validate")
      {
        refused[path] = std::exchange(messages, "");
      }
    }
  }
  EXPECT_EQ(taken + refused.size(), paths.size()) << run.err;
  return refused;
}

/// Texts as people write them and worse. Empty are only texts that a package can do without.
class RandomValues
{
public:
  explicit RandomValues(unsigned seed) : random(seed) {}

  bool flag() { return below(2) == 1; }

  std::string text(const std::string& member)
  {
    static const std::set<std::string> needed{"uuid",
                                              "version",
                                              "path",
                                              "topicName",
                                              "locale",
                                              "name",
                                              "execStart",
                                              "executableFiles",
                                              "supportedLanguages",
                                              "descriptionLanguages"};
    static const std::array<std::string, 16> pieces{"a",    "Z",   "7",    " ",     "\n", "\t",
                                                    "&",    "<b>", "]]>",  "\"",    "'",  "é",
                                                    "日本", "😀",   "\x01", "\uFFFE"};
    std::string text = needed.count(member) == 1 || flag() ? "x" : "";
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

/// Name and documentation of each element and attribute that a schema knows.
std::map<std::string, std::set<std::string>>
documentedNames(const Schema& schema, const QString& prefix, const QString& documentation)
{
  std::map<std::string, std::set<std::string>> names;
  QDomDocument document;
  EXPECT_TRUE(document.setContent(QByteArray::fromStdString(contentOf(schema.path.toStdString()))));
  for (const QString kind : {"element", "attribute"})
  {
    const QDomNodeList declarations = document.elementsByTagName(prefix + kind);
    for (int i = 0; i < declarations.size(); ++i)
    {
      const QDomElement declaration = declarations.at(i).toElement();
      const QString text = declaration.firstChildElement(documentation).text();
      EXPECT_FALSE(text.isEmpty()) << declaration.attribute("name").toStdString();
      if (!declaration.hasAttribute("ns"))
      {
        const QString form = kind == "element" ? "<%1[ />]" : " %1=";
        const QString name = form.arg(declaration.attribute("name"));
        names[name.toStdString()].insert(text.toStdString());
      }
    }
  }
  return names;
}
} // namespace

TEST(Schema, TakesExamplesAndWhatTheLibraryWrites)
{
  const TemporaryFolder folder;
  std::vector<std::string> paths = exampleManifests();
  for (unsigned seed = 0; seed < 200; ++seed)
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
    paths.push_back(folder.file(name, edited(wholeManifest, edits)));
    EXPECT_EQ(readingsOf(paths.back()), readingsOf(paths.front())) << contentOf(paths.back());
  }
  for (const Schema& schema : schemas)
  {
    EXPECT_THAT(refusedBy(schema, paths), IsEmpty());
  }
}

TEST(Schema, RefusesWhatReadersSkipAndWhatMakesNoSense)
{
  const std::vector<Edit> faults{
      {"package", "manifest"},
      {"uuid='u'", ""},
      {"uuid='u'", "uuid=' '"},
      {" version='1' author", " author"},
      {"author", "Author"},
      {"uuid", "installer='i' uuid"},
      // sections
      {"<contents>", "text<contents>"},
      {"<requirements>", "<web path='w'/><requirements>"},
      {"supportedLanguages", "SupportedLanguages"},
      {"<requirements>", "<names/><requirements>"},
      {"<requirements>", "<behaviorContent path='b'/><requirements>"},
      {"<webContent", "<services/><webContent"},
      {"<services>", "<services since='1'>"},
      // texts and languages
      {"<name lang='en'>N</name>", "N"},
      {"<name lang='en'>N</name>", "<name>N</name>"},
      {"<name lang='en'>N", "<name lang=''>N"},
      {"<name lang='en'>N", "<name lang='en' language='en'>N"},
      {"<name lang='en'>N</name>", "<title lang='en'>N</title>"},
      {"<description lang='en'>D", "<description lang='en'><b>D</b>"},
      {"<language>de", "<lang>de</lang><language>de"},
      {"<language>de", "<language/><language>de"},
      {"<language>de", "<language lang='de'>de"},
      // behaviors
      {"<behaviorContent path='b'>", "<behaviorContent>"},
      {"<behaviorContent path='b'>", "<behaviorContent path=''>"},
      {"<behaviorContent path='b'>", "<behaviorContent path='b' nature='solitary'>"},
      {"<nature>", "text<nature>"},
      {"<nature>", "<nature/><nature>"},
      {"<nature>", "<categories/><nature>"},
      {"<userRequestable/>", "<userRequestable>false</userRequestable>"},
      {"<tag lang='en'>t</tag>", "<sentence lang='en'>t</sentence>"},
      {"<sentence lang='en'>r", "<sentence>r"},
      {"purpose", "lang='en' purpose"},
      {" purpose='start'", ""},
      {"<canStandUp/>", "<canJump/>"},
      {"<canStandUp/>", "<canstandup/>"},
      {"<canStandUp/>", "<canStandUp/><canStandUp/>"},
      {"<canStandUp/>", "<canStandUp>true</canStandUp>"},
      {"<canStandUp/>", "<permission>canStandUp</permission>"},
      {"<nature>", "<canStandUp/><nature>"},
      // dialogs, language packs and web content
      {" topicName='t'", ""},
      {"<topic language='en' path='t'/>", "<topic path='t'/>"},
      {"<topic language='en' path='t'/>", "<topic language='en' path=''/>"},
      {"<topic language='en' path='t'/>", "<topic language='en' path='t'>text</topic>"},
      {"<topic ", "<Topic "},
      {"<languageContent path='l'>", "<languageContent>"},
      {"<locale>it</locale>", ""},
      {"<locale>it</locale>", "<locale/>"},
      {"<engine name", "<engine path='p' name"},
      {"<webContent path='w'/>", "<webContent/>"},
      {"<webContent", "<webContent path='v'/><webContent"},
      {"<webContent path='w'/>", "<webContent path='w'><page/></webContent>"},
      // requirements, services and files
      {" model=", " name="},
      {"<mirelRequirement", "<mirelrequirement/><mirelRequirement"},
      {"name='s'", ""},
      {"execStart='x'", ""},
      {"autorun='true'", "autorun='1'"},
      {"autorun='true'", "autoRun='true'"},
      {"<file path='f'/>", "<file/>"},
      {"<file path='f'/>", "<file path='f'>f</file>"},
  };
  const TemporaryFolder folder;
  std::map<std::string, std::string> pathToFault;
  std::vector<std::string> paths;
  for (const Edit& fault : faults)
  {
    const std::string name = std::to_string(paths.size()) + ".xml";
    paths.push_back(folder.file(name, edited(wholeManifest, {fault})));
    pathToFault[paths.back()] = fault.from + " -> " + fault.to;
  }
  for (const Schema& schema : schemas)
  {
    std::map<std::string, std::string> taken = pathToFault;
    for (const auto& [path, messages] : refusedBy(schema, paths))
    {
      EXPECT_THAT(messages, HasSubstr("validity error")); // and not damaged by the edit
      taken.erase(path);
    }
    EXPECT_THAT(taken, IsEmpty()) << schema.path.toStdString();
  }
}

TEST(Schema, SaysTheSameInBothOfAllThatIsRead)
{
  const auto names = documentedNames(schemas[0], "", "a:documentation");
  EXPECT_EQ(names, documentedNames(schemas[1], "xs:", "xs:annotation"));
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestContent(wholeManifest));
  const std::string written = package.saveToManifestContent();
  for (const auto& [name, documentation] : names)
  {
    EXPECT_THAT(written + "<webContent ", testing::ContainsRegex(name));
  }
}
