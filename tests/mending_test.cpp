// SPDX-License-Identifier: Apache-2.0
#include "findings.hpp"
#include "manifestpattern.hpp"

#include <check/fixing.hpp>
#include <source/document.hpp>
#include <source/encoding.hpp>

#include <random>

using namespace vesk::check;
using testing::IsEmpty;
using vesk::source::Encoding;

namespace
{
std::string inPackage(const std::string& content)
{
  return "<package uuid='u' version='1'>" + content + "</package>";
}

struct MendCase
{
  const char* rule;
  std::string before; ///< the only fault that can be mended is in it
  std::string after;
};

std::vector<MendCase> mendCases()
{
  const auto in = [](const char* rule, const char* before, const char* after) {
    return MendCase{rule, inPackage(before), inPackage(after)};
  };
  return {
      {"root-name", "<!--a--><Package uuid='u'\tversion='1'\n></Package ><!--b-->",
       "<!--a--><package uuid='u'\tversion='1'\n></package ><!--b-->"},
      {"unknown-attribute", "<package\n\tUUID = \"u\" version='1'/>",
       "<package\n\tuuid = \"u\" version='1'/>"},
      {"unknown-attribute", "<package vendor='&lt;&#233;' uuid='u' version='1'/>",
       "<package organization='&lt;&#233;' uuid='u' version='1'/>"},
      {"surrounding-blanks", "<package uuid='u' version=\"\t1&#10;\"/>",
       "<package uuid='u' version=\"1\"/>"},
      in("unknown-element", "<Names >\n<name lang='en'/></Names\n><!--a-->",
         "<names >\n<name lang='en'/></names\n><!--a-->"),
      in("unknown-attribute", // the other one would replace it
         "<names><name language='de'>a</name><name locale='de'>b</name></names>",
         "<names><name lang='de'>a</name><name locale='de'>b</name></names>"),
      in("unknown-element", "<Services/><!--a-->", "<services/><!--a-->"),
      in("unknown-element", "\n\t<contnets>\n\t\t<!--a--></contnets >",
         "\n\t<contents>\n\t\t<!--a--></contents >"),
      in("unusual-name", "<names>\r<title lang='en'>&amp;<![CDATA[<]]></title></names>",
         "<names>\r<name lang='en'>&amp;<![CDATA[<]]></name></names>"),
      in("surrounding-blanks",
         "<supportedLanguages><language>\n  en\n</language></supportedLanguages>",
         "<supportedLanguages><language>en</language></supportedLanguages>"),
      in("repeated-language",
         "<supportedLanguages>\n<language>en</language> <!--a-->\n<language>en</language>\n"
         "<language>de</language></supportedLanguages>",
         "<supportedLanguages>\n<language>en</language> <!--a-->\n"
         "<language>de</language></supportedLanguages>"),
      in("unknown-nature",
         "<contents><behaviorContent path='b'><nature> Solitary</nature></behaviorContent>"
         "</contents>",
         "<contents><behaviorContent path='b'><nature>solitary</nature></behaviorContent>"
         "</contents>"),
      in("presence-counts",
         "<contents><behaviorContent path='b'><userRequestable> 1 </userRequestable>"
         "</behaviorContent></contents>",
         "<contents><behaviorContent path='b'><userRequestable></userRequestable>"
         "</behaviorContent></contents>"),
      in("unsupported-permission",
         "<contents><behaviorContent path='b'><permissions><CanStandup/></permissions>"
         "</behaviorContent></contents>",
         "<contents><behaviorContent path='b'><permissions><canStandUp/></permissions>"
         "</behaviorContent></contents>"),
      in("repeated-permission",
         "<contents><behaviorContent path='b'><permissions><canStandUp/>\n <canStandUp/>\n"
         "</permissions></behaviorContent></contents>",
         "<contents><behaviorContent path='b'><permissions><canStandUp/>\n"
         "</permissions></behaviorContent></contents>"),
      in("needless-repeat",
         "<contents><behaviorContent path='b'><userRequestable/><userRequestable/>"
         "</behaviorContent></contents>",
         "<contents><behaviorContent path='b'><userRequestable/></behaviorContent></contents>"),
      in("autorun-one", "<services><service name='s' execStart='s' autorun=\"1\"/></services>",
         "<services><service name='s' execStart='s' autorun=\"true\"/></services>"),
      in("autorun-value", "<services><service name='s' execStart='s' autorun=' FALSE'/></services>",
         "<services><service name='s' execStart='s' autorun='false'/></services>"),
      in("repeated-section",
         "\n\t<services>\n\t\t<service name='s' execStart='s'/>\n\t</services>\n\t<services>\n\t\t"
         "<!--t--><service name='t' execStart='t'/>\n\t</services>\n",
         "\n\t<services>\n\t\t<service name='s' execStart='s'/>\n\t\t"
         "<!--t--><service name='t' execStart='t'/>\n\t</services>\n"),
  };
}

std::string replaced(const std::string& text, const char* from, const char* to)
{
  return QString::fromStdString(text).replace(from, to).toStdString();
}

std::vector<std::string> mendableTags(const std::string& bytes)
{
  std::vector<std::string> tags;
  for (const Finding& finding : checkBytes(bytes, everything()).findings)
  {
    if (finding.mend)
    {
      tags.emplace_back(finding.rule->tag);
    }
  }
  return tags;
}
} // namespace

TEST(Mending, ChangesNothingButTheFault)
{
  for (const MendCase& mend : mendCases())
  {
    SCOPED_TRACE(mend.before);
    EXPECT_THAT(mendableTags(mend.before), testing::ElementsAre(mend.rule));
    const Fixed fixed = fix(mend.before);
    EXPECT_EQ(fixed.bytes, mend.after);
    EXPECT_EQ(fixed.count, 1U);
    EXPECT_EQ(fix(mend.before, {{{mend.rule, Severity::Off}}, {}}).bytes, mend.before);
    EXPECT_EQ(fix(byteOrderMark + mend.before).bytes, byteOrderMark + mend.after);
    EXPECT_EQ(fix(replaced(mend.before, "\n", "\r\n")).bytes, replaced(mend.after, "\n", "\r\n"));
    for (const char* const encoding : {"UTF-16LE", "UTF-16BE"})
    {
      const Encoding wide{encoding, true};
      EXPECT_EQ(fix(vesk::source::encode(byteOrderMark + mend.before, wide)).bytes,
                vesk::source::encode(byteOrderMark + mend.after, wide));
    }
  }
}

TEST(Mending, IsOfSureFaultsOnly)
{
  const auto inBehavior = [](const std::string& content)
  { return "<contents><behaviorContent path='b'>" + content + "</behaviorContent></contents>"; };
  for (const std::string& content : {
           std::string("<Services/><Services/>"),
           std::string("<services><serv name='s'/></services>"),
           std::string("<supportedLanguage>en</supportedLanguage>"),
           std::string("<names><name lang='en'>a</name><name lang='en '>b</name></names>"),
           std::string("<Names><!--a--></Names>"),
           std::string("<names><name language='de' locale='en'>a</name></names>"),
           std::string("<names><x:title lang='en'>a</x:title></names>"),
           std::string("<names lang='en'><name lang='en'>a</name></names><names x='1'/>"),
           std::string("<services>a</services><services/>"),
           std::string("<services/><services a='b'/>"),
           std::string("<services/><services>&lt;</services>"),
           std::string("<services><service name='s' execStart='s' autorun='yes'/></services>"),
           std::string("<requirements><mirelRequirement maxVersion='2' maxversion='3'/>"
                       "</requirements>"),
           std::string("<requirements><robotRequirement minVersion='2'/></requirements>"),
           inBehavior("<nature>inactive</nature>"),
           inBehavior("<nature>solitary<!--a--></nature><nature>Interactive<b/></nature>"),
           inBehavior("<permissions><cannotStandUp/></permissions>"),
           inBehavior("<permissions><canStandup>no</canStandup></permissions>"),
           inBehavior("<permissions><canStandUp/><canStandUp><!--a--></canStandUp></permissions>"),
           inBehavior("<userRequestable>no</userRequestable>"),
           inBehavior("<userRequestable>true<!--a--></userRequestable>"),
           inBehavior("<requestable>false</requestable>"),
           inBehavior("<tags><tag lang='en'>a</tag></tags><tags><!--a--></tags>"),
           inBehavior("<sentence lang='en'>a</sentence>"),
       })
  {
    const std::string manifest = inPackage(content);
    EXPECT_THAT(checkText(manifest), testing::Not(IsEmpty())) << content;
    EXPECT_THAT(mendableTags(manifest), IsEmpty()) << content;
    const Fixed fixed = fix(manifest);
    EXPECT_EQ(fixed.bytes, manifest);
    EXPECT_THAT(fixed.mended, IsEmpty());
  }
  for (const char* const root : {"packages", "manifest", "data", "x:package", "backpack"})
  {
    const std::string manifest =
        QString("<%1><package uuid='u' version='1'/></%1>").arg(root).toStdString();
    EXPECT_EQ(fix(manifest).bytes, manifest);
  }
}

TEST(Fix, CountsAllAndListsTheFirst)
{
  Options options;
  options.mostOfARule = 3;
  const std::string services =
      "<services>{7*<service name='#' execStart='#' autorun='1'/>}</services>";
  const Fixed fixed = fix(expanded(QString::fromStdString(inPackage(services))), options);
  EXPECT_EQ(fixed.bytes,
            replaced(expanded(QString::fromStdString(inPackage(services))), "'1'/>", "'true'/>"));
  EXPECT_EQ(fixed.count, 7U);
  ASSERT_EQ(fixed.mended.size(), 3U);
  EXPECT_EQ(fixed.mended.back().place, "/package/services/service[3]/@autorun");
}

TEST(Fix, MergesAnyNumberOfSections)
{
  const auto merged = fix(expanded(QString::fromStdString(
      inPackage("\n{200*  <services>\n    <service name='#' execStart='#'/>\n  </services>\n}"))));
  EXPECT_EQ(merged.bytes,
            expanded(QString::fromStdString(inPackage(
                "\n  <services>\n{200*    <service name='#' execStart='#'/>\n}  </services>\n"))));
  EXPECT_EQ(merged.count, 199U);
}

TEST(Fix, LeavesWhatIsNoStrictXml)
{
  for (const char* const manifest :
       {"", "<Package", "<Package uuid='u' version='1 '>",
        "<Package uuid='u' uuid='v' version='1 '/>", "<Package uuid='u'version='1 '/>",
        "<Package uuid='u' version='1 '/>\xFF",
        "<?xml version='1.0' encoding='x-no'?><Package uuid='u' version='1 '/>",
        "<Package uuid='\xC3' version='1 '/>", "\xFF\xFE<"})
  {
    const Fixed fixed = fix(manifest);
    EXPECT_EQ(fixed.bytes, manifest);
    EXPECT_EQ(fixed.count, 0U) << manifest;
  }
}

// Each with two edits, some of which put something in between characters.
TEST(Fix, TakesMendsThatDoNotOverlap)
{
  std::mt19937 random(5);
  const auto someRange = [&random](std::uint32_t from)
  {
    const auto begin = from + static_cast<std::uint32_t>(random() % 30);
    return vesk::source::Range{begin, begin + static_cast<std::uint32_t>(random() % 4)};
  };
  for (int i = 0; i < 500; ++i)
  {
    std::vector<Finding> findings(12);
    std::vector<const Finding*> expected;
    std::vector<vesk::source::Range> taken;
    for (Finding& finding : findings)
    {
      finding.mend = Mend{"", {{someRange(0), "x"}, {someRange(40), "y"}}};
      const std::vector<vesk::source::Edit>& edits = finding.mend->edits;
      bool areApart = true;
      for (const vesk::source::Range& other : taken)
      {
        for (const vesk::source::Edit& edit : edits)
        {
          areApart = areApart && (edit.range.end <= other.begin || other.end <= edit.range.begin);
        }
      }
      if (areApart)
      {
        expected.push_back(&finding);
        taken.insert(taken.end(), {edits.front().range, edits.back().range});
      }
    }
    EXPECT_EQ(mendableAtOnce(findings), expected);
  }
}
