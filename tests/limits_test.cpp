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

/// A manifest that goes beyond a limit when the N in its pattern is one more than \p most.
struct Hostile
{
  const char* name;
  int most;
  const char* pattern;
  const char* complaint; // the end of the message

  std::string with(int count) const
  {
    return expanded(QString(pattern).replace("{N*", '{' + QString::number(count) + '*'));
  }
};

std::ostream& operator<<(std::ostream& out, const Hostile& hostile) { return out << hostile.name; }

#define NESTING "more than 256 elements within each other"
#define PARENTHESES ": more than 256 parentheses within each other"
#define BROUGHT_IN "more than 1048576 characters brought in by entities"
#define ENTITIES ": more than 256 declared entities"
#define REFERENCES ": more than 1024 references in entities"
#define CHARACTERS ": more than 1048576 characters in entities"
#define ATTRIBUTES "more than 1024 attributes on an element"

const std::vector<Hostile> hostileManifests{
    {"Deep", 256, "{N*<a>}{N*</a>}", " at line 1, column 770: " NESTING},
    {"DeepAgain", 255, "<p>{N*<a>}{N*</a>}{255*<a>}{255*</a>}</p>",
     " at line 1, column 770: " NESTING},
    {"BehindAComment", 256, "<!--{40000*-x}-->\n{N*<a>}{N*</a>}",
     " at line 2, column 770: " NESTING},
    {"BehindInstructions", 256, "<?xml version='1.0'?><?x <!--?><?y? ?\?>{N*<a>}{N*</a>}",
     ": " NESTING},
    {"InAnEntity", 255, "<!DOCTYPE p [<!ENTITY e '{N*<a>}{N*</a>}'>]>\n<p>&e;&e;</p>",
     " at line 2, column 6: " NESTING},
    {"InChainedEntities", 127,
     "<!DOCTYPE p [<!ENTITY a '{128*<a>}'><!ENTITY b '&a;{N*<b>}{N*</b>}'>]>\n<p>&b;{128*</a>}</p>",
     ": " NESTING},
    {"Parentheses", 256,
     "<!DOCTYPE p [<!--{200*(}--><!ELEMENT q {N*(}a{N*)}><!ELEMENT p {N*(}a{N*)}>]><p/>",
     PARENTHESES},
    {"ParenthesesBehindAString", 256,
     "<!DOCTYPE p [<!ATTLIST p q CDATA '{200*(}'><!ELEMENT p {N*(}a{N*)}>]><p/>", PARENTHESES},
    {"ParenthesesInAnEntity", 256, "<!DOCTYPE p [<!ENTITY % p '<!ELEMENT p {N*(}a{N*)}>'>%p;]><p/>",
     PARENTHESES},
    {"ParenthesesBehindAnEntity", 200,
     "<!DOCTYPE p [<!ENTITY % p '<!ELEMENT p {56*(}'>%p;{N*(}a{N*)}{56*)}>]><p/>", PARENTHESES},
    {"Entities", 255, "<!DOCTYPE p [<!ENTITY e0 'x'>{N*<!ENTITY e@ '&e#;'>}]><p>&e5;</p>",
     ENTITIES},
    {"ExternalEntities", 256, "<!DOCTYPE p [{N*<!ENTITY e# SYSTEM 'x'>}]><p/>", ENTITIES},
    {"UnparsedEntities", 128,
     "<!DOCTYPE p [<!NOTATION n SYSTEM 'n'>{N*<!ENTITY e# SYSTEM 'x' NDATA n>}{128*<!ENTITY f# "
     "SYSTEM 'x'>}]><p/>",
     ENTITIES},
    {"ReferencesInEntities", 1024 - 300,
     "<!DOCTYPE p [<!ENTITY a ''><!ENTITY e '{300*&a;}'><!ENTITY f '{N*&a;}'>]><p/>", REFERENCES},
    {"LongEntities", (1 << 20) - 1000,
     "<!DOCTYPE p [<!ENTITY e '{1000*x}'><!ENTITY f '{N*x}'>]><p/>", CHARACTERS},
    {"LongEntity", 10,
     "<!DOCTYPE p [<!ENTITY e '{104857*x}'><!ENTITY f '123456'>]>\n<p>&f;{N*&e;}</p>",
     " at line 2, column 39: " BROUGHT_IN},
    {"LongEntityInAnAttribute", 1024, "<!DOCTYPE p [<!ENTITY e '{1024*x}'>]><p a='{N*&e;}'/>",
     ": " BROUGHT_IN},
    {"LongEntityInTheDocumentType", 1024, "<!DOCTYPE p [<!ENTITY % p '{1024* }'>{N*%p;}]><p/>",
     ": " BROUGHT_IN},
    {"Attributes", 1024, "<p{1024* a#='1'}><a{N* a#='1'}/></p>", ": " ATTRIBUTES},
    {"AttributesBehindAnEntity", 1022,
     "<!DOCTYPE p [<!ENTITY e '<a'>]><p>&e; xmlns:b='c' b='1'{N* a#='1'}/></p>", ": " ATTRIBUTES},
};

class HostileManifest : public testing::TestWithParam<Hostile>
{};
} // namespace

INSTANTIATE_TEST_SUITE_P(, HostileManifest, testing::ValuesIn(hostileManifests),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(HostileManifest, IsRefusedByAllReadersAtTheSamePlace)
{
  EXPECT_THAT(complaints(GetParam().with(GetParam().most)), testing::IsEmpty());
  std::vector<std::string> texts = complaints(GetParam().with(GetParam().most + 1));
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

TEST(Limits, EndTheWorkLongBeforeTheEndOfTheText)
{
  for (const char* pattern :
       {"{1000000*<a>}", "<!DOCTYPE p [<!ELEMENT p {1000000*(}a", "<p{100000* a#='1'}/>",
        "<!DOCTYPE p [<!ENTITY e '{1000000*<a>}'>]><p>&e;</p>",
        "<!DOCTYPE p [<!ENTITY e0 'x'>{30000*<!ENTITY e@ '&e#;'>}]><p>&e30000;</p>"})
  {
    EXPECT_EQ(complaints(expanded(pattern)).size(), 4U) << pattern;
  }
}

TEST(Limits, LetThroughWhatOnlyLooksLikeTooMuch)
{
  for (const char* pattern : {
           "<p>{1000*<a/>}{1000*<a></a>}</p>",
           "<p>{100*<a xmlns:a='u' xmlns:b='u'/>}{100*<b xmlns='u' xmlns:a='u' a:c='1'></b>}</p>",
           "<p{32* xmlns:a#='u'}><p a1:xmlns='xmlns:'/></p>",
           "<p{1024* b:xmlns:a#='1'}><xmlns:a{33* axmlns:a#='xmlns:'}/></p>",
           "<!--{300*<a>}--><p><![CDATA[{300*<a>}]]]]></p><?x {300*<a>}? ?>",
           R"(<p a='{300*/>}' b="'{3000*=}'"/>)",
       })
  {
    EXPECT_THAT(complaints(expanded(pattern)), testing::IsEmpty()) << pattern;
  }
}

TEST(Limits, PrefixesAreCountedWhereNamespacesAreProcessed)
{
  for (const char* pattern :
       {"<p{N* xmlns:a#='u'}/>", "{N*<a x='1'xmlns:a#='u'>}{N*</a>}",
        "<!DOCTYPE p [<!ENTITY e '<a{N* xmlns:a#=\"u\"}/>'>]><p xmlns='u'>&e;&e;</p>"})
  {
    const Hostile prefixes{"", 32, pattern, ""};
    EXPECT_THAT(complaints(prefixes.with(32)), testing::IsEmpty());
    EXPECT_THAT(
        complaints(prefixes.with(33)), // of the text only, not of the file
        testing::ElementsAre(EndsWith(": more than 32 namespace prefixes declared at once")));
  }
}

TEST(Limits, LanguagesAreListedOnceHoweverMany)
{
  for (const std::size_t count : {1U, 15U, 16U, 17U, 30U})
  {
    PackageInfo package;
    for (const char* pattern : {"{N*<l>#</l>}", "{N*<l>#</l>}{N*<l>#</l>}"})
    {
      const std::string all = Hostile{"", 0, pattern, ""}.with(static_cast<int>(count));
      ASSERT_TRUE(package.loadFromManifestContent("<p><supportedLanguages>" + all +
                                                  "</supportedLanguages></p>"));
      EXPECT_EQ(package.supportedLanguages().size(), count);
    }
  }
}
