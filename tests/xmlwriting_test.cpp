// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/behaviorinfo.hpp>
#include <package/behaviorinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/xml/serializing.hpp>
#include <package/xml/text.hpp>
#include <package/xml/writing.hpp>

#include <QDomDocument>

using namespace vesk;

namespace
{
std::string childrenAfter(const std::function<void(QDomDocument&, QDomElement&)>& write)
{
  QDomDocument document;
  QDomElement root = appendElement(document, document, std::string("r"));
  write(document, root);
  return serialize(document, 0);
}
} // namespace

TEST(XmlWriting, LeavesOutEmptyAttributesButWritesEmptyTexts)
{
  EXPECT_EQ(childrenAfter(
                [](QDomDocument& doc, QDomElement& root)
                {
                  addAttribute(root, "empty", "");
                  addAttribute(root, "blank", " ");
                  setAttribute(root, "set", "");
                  addTextNode(doc, root, "");
                  EXPECT_TRUE(createElement(doc, "loose").parentNode().isNull());
                }),
            "<r blank=\" \" set=\"\"></r>\n");
}

TEST(XmlWriting, WritesAGroupUnlessItsMapIsEmpty)
{
  EXPECT_EQ(childrenAfter(
                [](QDomDocument& doc, QDomElement& root)
                {
                  addLocalizedDataElement(doc, root, {}, "none", "i", "a");
                  addLocalizedDataElement(doc, root, {{"k", ""}}, "empty", "i", "a");
                  addLocalizedDataElement(doc, root, {{"b", "2"}, {"", "1"}}, "full", "i", "a");
                }),
            "<r>\n<empty/>\n<full>\n<i>1</i>\n<i a=\"b\">2</i>\n</full>\n</r>\n");
}

TEST(XmlWriting, SerializesAsTheToolkitDoes)
{
  QDomDocument document;
  document.setContent(QString::fromUtf8(
      "<?xml version='1.0'?><r a='\t&#10;&#13;&quot;&apos;&lt;>&amp;]]>é&#x1F916;'><b/>t<c/>"
      "<d><e/></d>u<f><![CDATA[<&]]><![CDATA[]]]]></f><?p i?><g>]]&gt;&#13;\n\t\"&amp;ü</g></r>"));
  for (const int indent : {0, 1, 2, 5})
  {
    EXPECT_EQ(serialize(document, indent), document.toString(indent).toUtf8().toStdString());
  }
}

TEST(XmlWriting, WritesOnlyPermissionsThatAreNames)
{
  BehaviorInfo behavior;
  BehaviorInfoPrivate& record = recordOf(behavior);
  record.permissions = {"canStandUp", "",       "a b",           "1a", "<x/>", "a:b", "-a",
                        "été",        "_a-1.b", "a\xEF\xBF\xBE", "a>"};
  QDomDocument document;
  record.saveToManifest(document, document);
  EXPECT_EQ(serialize(document, 0),
            "<behaviorContent path=\"\">\n<nature></nature>\n<permissions>\n<canStandUp/>\n<été/>\n"
            "<_a-1.b/>\n</permissions>\n</behaviorContent>\n");
}

TEST(XmlWriting, LoadsThroughTheOwnerOfARecord)
{
  BehaviorInfo source;
  BehaviorInfo owner;
  recordOf(owner) = recordOf(source); // takes over the pointer to the source as well
  QDomDocument document;
  document.setContent(QStringLiteral("<behaviorContent path='p'/>"));
  QDomNode node = document.documentElement();
  EXPECT_TRUE(recordOf(owner).loadFromManifest(node));
  EXPECT_EQ(source.path(), "p");
  EXPECT_EQ(owner.path(), "");
}
