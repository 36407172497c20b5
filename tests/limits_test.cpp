// SPDX-License-Identifier: Apache-2.0
// Manifests made to use up stack, memory or time.
#include "support.hpp"

#include <package/packageinfo.hpp>

#include <chrono>

using testing::EndsWith;
using vesk::PackageInfo;

namespace
{
std::string nested(int depth) { return repeated("<a>", depth) + repeated("</a>", depth); }

std::string withDocumentType(const std::string& declarations, const std::string& content)
{
  return "<!DOCTYPE p [" + declarations + "]>\n<p>" + content + "</p>";
}

std::string entity(const std::string& name, const std::string& value)
{
  return "<!ENTITY " + name + " '" + value + "'>";
}

std::string chainOfEntities(int count)
{
  std::string declarations = entity("e0", "x");
  for (int i = 1; i < count; ++i)
  {
    declarations += entity("e" + std::to_string(i), "&e" + std::to_string(i - 1) + ";");
  }
  return declarations;
}

std::string attributes(int count)
{
  std::string text;
  for (int i = 0; i < count; ++i)
  {
    text += " a" + std::to_string(i) + "='1'";
  }
  return text;
}

std::string parentheses(int count)
{
  return "<!ELEMENT p " + repeated("(", count) + "a" + repeated(")", count) + ">";
}

/// The messages of the three ways to read the manifest, on a small stack; none where it is read.
std::vector<std::string> complaints(const std::string& manifest)
{
  const TemporaryFolder folder;
  const std::string path = folder.file("m.xml", manifest);
  CapturedLog captured;
  onSmallStack(
      [&]
      {
        QFile file(QString::fromStdString(path));
        EXPECT_EQ(PackageInfo().loadFromManifestFile(path),
                  PackageInfo().loadFromManifestContent(manifest));
        PackageInfo().loadFromManifestFile(file);
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
  std::string manifest;
  std::string complaint; // with its place
};

std::ostream& operator<<(std::ostream& out, const Hostile& hostile) { return out << hostile.name; }

const std::string nest = "more than 256 elements within each other";
const std::string parens = "more than 256 parentheses within each other";

const std::vector<Hostile> hostileManifests{
    {"Deep", nested(257), " at line 1, column 770: " + nest},
    {"Million", "\n" + repeated("<a>", 1000000), " at line 2, column 770: " + nest},
    {"DeepAfterALongProlog", "<!--" + repeated("-x", 40000) + "-->\n" + repeated("<a>", 1000000),
     " at line 2, column 770: " + nest},
    {"DeepBehindInstructions",
     "<?xml version='?>'?><?x <!--?><?y?"
     "?>" +
         repeated("<a>", 1000000),
     " at line 1, column 806: " + nest},
    {"DeepInAnEntity", withDocumentType(entity("e", repeated("<a>", 1000)), "&e;"),
     " at line 2, column 6: " + nest},
    {"DeepThroughAttributeValue",
     withDocumentType(entity("e", "<b>"), repeated("<a x='&e;'>", 1000)), ": unexpected character"},
    {"DeepInAMillionFromAnEntity", withDocumentType(entity("e", repeated("<a>", 1000000)), "&e;"),
     ": more than 1048576 characters in entities"},
    {"DeepInChainedEntities",
     withDocumentType(entity("a", repeated("<a>", 200)) + entity("b", "&a;<b>&a;"), "<x>&b;"),
     ": " + nest},
    {"Parentheses", withDocumentType(parentheses(257), ""), " at line 1, column 282: " + parens},
    {"MillionParentheses", withDocumentType(parentheses(1000000), ""), ": " + parens},
    {"ParenthesesInParameterEntities",
     withDocumentType(entity("% p", "<!ELEMENT p " + repeated("(", 300)) + "%p;", ""),
     ": " + parens},
    {"ParenthesesAcrossParameterEntities",
     withDocumentType(
         entity("% p", "<!ELEMENT p " + repeated("(", 200)) + "%p;" + repeated("(", 200), ""),
     ": " + parens},
    {"Entities", withDocumentType(chainOfEntities(257), ""), ": more than 256 declared entities"},
    {"ManyEntities", withDocumentType(chainOfEntities(30000), "&e29999;"),
     ": more than 256 declared entities"},
    {"ExternalEntities",
     withDocumentType(repeated("<!ENTITY % x SYSTEM 'x'>", 1) + chainOfEntities(256), ""),
     ": more than 256 declared entities"},
    {"LongEntityOften",
     withDocumentType(entity("e", repeated("x", 100000)), repeated("&e;", 10000)),
     " at line 2, column 36: more than 1048576 characters brought in by entities"},
    {"LongEntityInAttributes",
     withDocumentType(entity("e", repeated("x", 100000)), "<a b='" + repeated("&e;", 20) + "'/>"),
     ": more than 1048576 characters brought in by entities"},
    {"LongParameterEntityOften",
     withDocumentType(entity("% p", repeated("x", 100000)) + entity("e", repeated("%p;", 10000)),
                      ""),
     ": more than 1048576 characters brought in by entities"},
    {"ReferencesInEntities",
     withDocumentType(entity("a", "") + entity("e", repeated("&a;", 300000)) + entity("f", ""), ""),
     ": more than 1024 references in entities"},
    {"Attributes", "<p" + attributes(1025) + "/>",
     " at line 1, column 9140: more than 1024 attributes on an element"},
    {"ManyAttributes", "<p" + attributes(100000) + "/>",
     ": more than 1024 attributes on an element"},
    {"AttributesBehindAnEntity",
     withDocumentType(entity("e", "<a"), "&e;" + attributes(1025) + "/>"),
     ": more than 1024 attributes on an element"},
};

class HostileManifest : public testing::TestWithParam<Hostile>
{};
} // namespace

INSTANTIATE_TEST_SUITE_P(, HostileManifest, testing::ValuesIn(hostileManifests),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(HostileManifest, IsRefusedByAllReadersAtTheSamePlace)
{
  const std::vector<std::string> texts = complaints(GetParam().manifest);
  ASSERT_EQ(texts.size(), 3U);
  for (const std::string& text : texts)
  {
    EXPECT_EQ(text.compare(0, 16, "Syntax error in "), 0);
    EXPECT_THAT(text.substr(text.rfind(" at line")), EndsWith(GetParam().complaint));
  }
}

TEST(Limits, LetThroughWhatDoesNotGoBeyondThem)
{
  const std::string halfMebi = repeated("x", 1 << 19);
  for (const std::string& manifest : {
           nested(256),
           "<p>" + repeated(nested(255), 3) + "</p>",
           "<p>" + repeated("<a/>", 1000) + repeated("<a></a>", 1000) + "</p>",
           "<p" + attributes(1024) + "><a" + attributes(1024) + "/></p>",
           withDocumentType(parentheses(256) + parentheses(256), ""),
           withDocumentType("<!--" + repeated("(", 200) + "-->" + parentheses(256), ""),
           withDocumentType(chainOfEntities(256), "&e5;"),
           withDocumentType(entity("e", halfMebi), "&e;&e;"),
           withDocumentType(entity("e", repeated("<a>", 255) + repeated("</a>", 255)), "&e;&e;"),
           // what looks like markup, where it is none
           "<!--" + repeated("<a>", 300) + "--><p>" + "<![CDATA[" + repeated("<a>", 300) +
               "]]]]></p><?x " + repeated("<a>", 300) + "?" + "?>",
           "<p a='" + repeated("/>", 300) + "' b=\"'" + repeated("=", 3000) + "'\"/>",
       })
  {
    EXPECT_THAT(complaints(manifest), testing::IsEmpty()) << manifest.substr(0, 60);
  }
}

// Were the list walked for each language, this would not come to an end within the time of a test.
TEST(Limits, ManyLanguagesAreLookedUp)
{
  constexpr int count = 200000;
  std::string manifest = "<p><supportedLanguages>";
  for (int i = 0; i < count; ++i)
  {
    manifest += "<language>" + std::to_string(i) + "</language>";
  }
  manifest += "</supportedLanguages></p>";
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestContent(manifest));
  ASSERT_TRUE(package.loadFromManifestContent(manifest));
  EXPECT_EQ(package.supportedLanguages().size(), count);
}
