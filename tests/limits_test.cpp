// SPDX-License-Identifier: Apache-2.0
// Manifests made to use up stack, memory or time.
#include "manifestpattern.hpp"
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>
#include <package/packageinfo.hpp>

using testing::EndsWith;
using vesk::PackageInfo;

namespace
{
/// The messages of the four ways to read the manifest, on a small stack; none where it is read.
std::vector<std::string> complaints(const std::string& manifest)
{
  const TemporaryFolder folder;
  const std::string path = folder.file("m.xml", manifest);
  CapturedLog captured;
  onSmallStack(
      [&]
      {
        QFile file(QString::fromStdString(path));
        PackageInfo().loadFromManifestFile(path);
        PackageInfo().loadFromManifestContent(manifest);
        PackageInfo().loadFromManifestFile(file);
        try
        {
          vesk::loadManifest(path);
        }
        catch (const std::runtime_error&) // and it is logged
        {}
      });
  std::vector<std::string> texts;
  for (const vesk::log::Message& message : captured.messages)
  {
    texts.push_back(message.text);
  }
  return texts;
}

struct Hostile
{
  const char* name;
  const char* pattern;
  const char* complaint; // the end of the message
};

std::ostream& operator<<(std::ostream& out, const Hostile& hostile) { return out << hostile.name; }

#define NESTING "more than 256 elements within each other"
#define PARENTHESES "more than 256 parentheses within each other"
#define BROUGHT_IN "more than 1048576 characters brought in by entities"
#define ENTITIES ": more than 256 declared entities"
#define ATTRIBUTES "more than 1024 attributes on an element"

const std::vector<Hostile> hostileManifests{
    {"Deep", "{257*<a>}{257*</a>}", " at line 1, column 770: " NESTING},
    {"Million", "\n{1000000*<a>}", " at line 2, column 770: " NESTING},
    {"BehindAComment", "<!--{40000*-x}-->\n{1000000*<a>}", " at line 2, column 770: " NESTING},
    {"BehindInstructions", "<?xml version='?>'?><?x <!--?><?y? ?>{1000*<a>}",
     " at line 1, column 807: " NESTING},
    {"InAnEntity", "<!DOCTYPE p [<!ENTITY e '{1000*<a>}'>]>\n<p>&e;</p>",
     " at line 2, column 6: " NESTING},
    {"InAMillionFromAnEntity", "<!DOCTYPE p [<!ENTITY e '{1000000*<a>}'>]><p>&e;</p>",
     ": more than 1048576 characters in entities"},
    {"InChainedEntities", "<!DOCTYPE p [<!ENTITY a '{200*<a>}'><!ENTITY b '&a;<b>&a;'>]>\n<p>&b;",
     ": " NESTING},
    {"Parentheses", "<!DOCTYPE p [<!ELEMENT p {257*(}a{257*)}>]><p/>",
     " at line 1, column 282: " PARENTHESES},
    {"MillionParentheses", "<!DOCTYPE p [<!ELEMENT p {1000000*(}a", ": " PARENTHESES},
    {"ParenthesesInAnEntity", "<!DOCTYPE p [<!ENTITY % p '<!ELEMENT p {300*(}'>%p;",
     ": " PARENTHESES},
    {"ParenthesesBehindAnEntity", "<!DOCTYPE p [<!ENTITY % p '<!ELEMENT p {200*(}'>%p;{200*(}",
     ": " PARENTHESES},
    {"ParenthesesInEntitiesInEntities",
     "<!DOCTYPE p [<!ENTITY % b '<!ELEMENT p {200*(}'><!ENTITY % a '&#37;b;{200*(}'>%a;",
     ": " PARENTHESES},
    {"Entities", "<!DOCTYPE p [<!ENTITY e0 'x'>{256*<!ENTITY e@ '&e#;'>}]><p/>", ENTITIES},
    {"ManyEntities", "<!DOCTYPE p [<!ENTITY e0 'x'>{30000*<!ENTITY e@ '&e#;'>}]><p>&e30000;</p>",
     ENTITIES},
    {"ExternalEntities", "<!DOCTYPE p [{257*<!ENTITY e# SYSTEM 'x'>}]><p/>", ENTITIES},
    {"UnparsedEntities", "<!DOCTYPE p [{257*<!ENTITY e# SYSTEM 'x' NDATA n>}]><p/>", ENTITIES},
    {"LongEntity", "<!DOCTYPE p [<!ENTITY e '{100000*x}'>]>\n<p>{10000*&e;}</p>",
     " at line 2, column 36: " BROUGHT_IN},
    {"LongEntityInAnAttribute", "<!DOCTYPE p [<!ENTITY e '{100000*x}'>]><p a='{20*&e;}'/>",
     ": " BROUGHT_IN},
    {"LongEntityInAnEntity",
     "<!DOCTYPE p [<!ENTITY % p '{100000*x}'><!ENTITY e '{10000*%p;}'>]><p/>", ": " BROUGHT_IN},
    {"ReferencesInEntities",
     "<!DOCTYPE p [<!ENTITY a ''><!ENTITY e '{300000*&a;}'><!ENTITY f ''>]><p/>",
     ": more than 1024 references in entities"},
    {"Attributes", "<p{1025* a#='1'}/>", " at line 1, column 9140: " ATTRIBUTES},
    {"ManyAttributes", "<p{100000* a#='1'}/>", ": " ATTRIBUTES},
    {"AttributesBehindAnEntity", "<!DOCTYPE p [<!ENTITY e '<a'>]><p>&e;{1025* a#='1'}/></p>",
     ": " ATTRIBUTES},
};

class HostileManifest : public testing::TestWithParam<Hostile>
{};
} // namespace

INSTANTIATE_TEST_SUITE_P(, HostileManifest, testing::ValuesIn(hostileManifests),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(HostileManifest, IsRefusedByAllReadersAtTheSamePlace)
{
  std::vector<std::string> texts = complaints(expanded(GetParam().pattern));
  ASSERT_EQ(texts.size(), 4U);
  QString fromFile = QString::fromStdString(texts[2]);
  fromFile.replace(" at line ", ":").replace(", column ", ":");
  EXPECT_EQ(texts[3], fromFile.toStdString());
  texts.pop_back();
  for (const std::string& text : texts)
  {
    EXPECT_EQ(text.compare(0, 16, "Syntax error in "), 0);
    EXPECT_THAT(text.substr(text.rfind(" at line")), EndsWith(GetParam().complaint));
  }
}

TEST(Limits, LetThroughWhatDoesNotGoBeyondThem)
{
  for (const char* pattern : {
           "{256*<a>}{256*</a>}",
           "<p>{255*<a>}{255*</a>}{255*<a>}{255*</a>}</p>",
           "<p>{1000*<a/>}{1000*<a></a>}</p>",
           "<p{1024* a#='1'}><a{1024* a#='1'}/></p>",
           "<p>{100*<a xmlns:a='u' xmlns:b='u'/>}{100*<b xmlns='u' xmlns:a='u' a:c='1'></b>}</p>",
           "<p{32* xmlns:a#='u'}><p a1:xmlns='xmlns:'/></p>",
           "<p{1024* b:xmlns:a#='1'}><xmlns:a{33* axmlns:a#='xmlns:'}/></p>",
           "<!DOCTYPE p [<!ELEMENT p {256*(}a{256*)}><!ELEMENT q {256*(}a{256*)}>]><p/>",
           "<!DOCTYPE p [<!--{200*(}--><!ELEMENT p {256*(}a{256*)}>]><p/>",
           "<!DOCTYPE p [<!ENTITY e0 'x'>{255*<!ENTITY e@ '&e#;'>}]><p>&e5;</p>",
           "<!DOCTYPE p [<!ENTITY e '{524288*x}'>]><p>&e;&e;</p>",
           "<!DOCTYPE p [<!ENTITY e '{255*<a>}{255*</a>}'>]><p>&e;&e;</p>",
           // what looks like markup, where it is none
           "<!--{300*<a>}--><p><![CDATA[{300*<a>}]]]]></p><?x {300*<a>}? ?>",
           R"(<p a='{300*/>}' b="'{3000*=}'"/>)",
       })
  {
    EXPECT_THAT(complaints(expanded(pattern)), testing::IsEmpty()) << pattern;
  }
}

TEST(Limits, PrefixesAreCountedWhereNamespacesAreProcessed)
{
  for (const auto& [pattern, column] :
       {std::pair("<p{33* xmlns:a#='u'}/>", "447"),
        std::pair("{33*<a x='1'xmlns:a#='u'>}{33*</a>}", "708"),
        std::pair("<!DOCTYPE p [<!ENTITY e '<a{33* xmlns:a#=\"u\"}/>'>]><p>&e;</p>", "491")})
  {
    EXPECT_THAT(
        complaints(expanded(pattern)), // of the text only, not of the file
        testing::ElementsAre(EndsWith(" at line 1, column " + std::string(column) +
                                      ": more than 32 namespace prefixes declared at once")));
  }
}

TEST(Limits, LanguagesAreListedOnceHoweverMany)
{
  const std::string manifest =
      expanded("<p><supportedLanguages>{30*<l>#</l>}{30*<l>#</l>}</supportedLanguages></p>");
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestContent(manifest));
  EXPECT_EQ(package.supportedLanguages().size(), 30U);
}
