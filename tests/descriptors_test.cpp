// SPDX-License-Identifier: Apache-2.0
// Dialogs and language packs.
#include "support.hpp"

#include <package/packageinfo.hpp>

#include <QDomDocument>

using testing::ElementsAre;
using testing::Pair;
using vesk::DialogInfo;
using vesk::LanguageInfo;

namespace
{
DialogInfo dialogFrom(const char* xml)
{
  QDomDocument document;
  document.setContent(QString::fromUtf8(xml));
  QDomElement element = document.documentElement();
  DialogInfo dialog;
  EXPECT_TRUE(dialog.loadFromManifest(element));
  return dialog;
}

std::string xmlOf(const DialogInfo& dialog)
{
  QDomDocument document;
  dialog.saveToManifest(document, document);
  QDomElement element = document.documentElement();
  EXPECT_EQ(element.tagName(), "dialogContent");
  EXPECT_TRUE(element.hasAttribute("topicName"));
  return (element.attribute("topicName") + '/' + element.attribute("typeVersion") + '/' +
          QString::number(element.childNodes().count()))
      .toStdString();
}
} // namespace

TEST(Dialog, StartsWithATypeVersionThatAnElementWithoutOneTakesAway)
{
  DialogInfo fresh;
  EXPECT_EQ(fresh.typeVersion(), "1.0");
  EXPECT_EQ(xmlOf(fresh), "/1.0/0");
  EXPECT_EQ(dialogFrom("<dialogContent topicName='t'/>").typeVersion(), "");
}

TEST(Dialog, ReadsTopicsAndSkipsOtherChildren)
{
  const DialogInfo dialog =
      dialogFrom("<x topicName='t' typeVersion='2'><!-- c --><topic language='en' path='a'/>"
                 "<Topic language='fr' path='b'/><topic path='c'/><topic language='en' path='d'/>"
                 "</x>");
  EXPECT_EQ(dialog.topicName(), "t");
  EXPECT_EQ(dialog.typeVersion(), "2");
  EXPECT_THAT(dialog.topics(), ElementsAre(Pair("", "c"), Pair("en", "d")));
}

TEST(Dialog, DoesNotWriteTopicsWithoutLanguageOrPath)
{
  DialogInfo dialog;
  dialog.setTopicName("t");
  dialog.setTopic("", "a");
  dialog.setTopic("en", "");
  EXPECT_EQ(xmlOf(dialog), "t/1.0/0");
  dialog.setTopic("en", "p");
  EXPECT_EQ(xmlOf(dialog), "t/1.0/1");
  EXPECT_EQ(printed(dialog), "Topic name: t\nType version: 1.0\nTopic files: \n -> a\nen -> p\n");
}

TEST(Dialog, ComparesAllItHolds)
{
  DialogInfo left;
  left.setTopic("en", "a");
  EXPECT_EQ(left.topic("xx"), "");
  EXPECT_FALSE(left.removeTopic("xx"));
  for (const auto& change :
       std::vector<std::function<void(DialogInfo&)>>{
           [](DialogInfo& dialog) { dialog.setTopicName("x"); },
           [](DialogInfo& dialog) { dialog.setTypeVersion("x"); },
           [](DialogInfo& dialog) { dialog.setTopic("en", "x"); },
           [](DialogInfo& dialog) { dialog.setTopic("fr", "a"); },
           [](DialogInfo& dialog) { dialog.removeTopic("en"); }})
  {
    DialogInfo right = left;
    EXPECT_TRUE(left == right);
    EXPECT_FALSE(left != right);
    change(right);
    EXPECT_FALSE(left == right);
    EXPECT_TRUE(left != right);
    const DialogInfo assigned = (right = left);
    EXPECT_TRUE(right == left);
    EXPECT_TRUE(assigned == left);
  }
}

TEST(Language, ReadsWritesAndReports)
{
  vesk::PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestContent(
      "<package><contents>"
      "<languageContent path='p'><engine name='e' version='1'/><engine name='f'/>"
      "<locale>it</locale><names><name lang='en'>Italian</name><any lang='de'/></names>"
      "<other/></languageContent>"
      "<languageContent/></contents></package>"));
  const LanguageInfo& pack = package.languages().front();
  EXPECT_EQ(printed(pack), "ISO 639 code: it\nRelative path: p\nEngine name: f\nEngine version: \n"
                           "Names:\n  de -> \n  en -> Italian\n");
  EXPECT_EQ(package.saveToManifestContent(), R"(<?xml version='1.0' encoding='UTF-8'?>
<package>
 <contents>
  <languageContent path="p">
   <engine name="f" version=""/>
   <locale>it</locale>
   <names>
    <name lang="en">Italian</name>
   </names>
  </languageContent>
  <languageContent path="">
   <engine name="" version=""/>
   <locale></locale>
  </languageContent>
 </contents>
</package>
)");
}

TEST(Language, CopiesShareNothing)
{
  LanguageInfo pack;
  pack.setPath("p");
  pack.setLocale("it");
  pack.setEngineName("e");
  pack.setEngineVersion("1");
  EXPECT_EQ(pack.name("de"), "");
  pack.setName("Deutsch", "de");
  LanguageInfo target;
  LanguageInfo returned = (target = pack);
  returned.setLocale("x");
  pack.setName("x", "de");
  LanguageInfo moved(std::move(target));
  EXPECT_EQ(moved.path() + moved.locale() + moved.engineName() + moved.engineVersion(), "pite1");
  EXPECT_EQ(moved.name("de"), "Deutsch");
}
