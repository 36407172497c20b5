// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/behaviorinfo.hpp>
#include <package/behaviorinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/xml/serializing.hpp>
#include <package/xml/text.hpp>

#include <QDomDocument>

using namespace vesk;

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
                        "été",        "_a-1.b", "a\xEF\xBF\xBE", "a>", "ʰ",    "ª"};
  QDomDocument document;
  record.saveToManifest(document, document);
  EXPECT_EQ(serialize(document, 0),
            "<behaviorContent path=\"\">\n<nature></nature>\n<permissions>\n<canStandUp/>\n<été/>\n"
            "<_a-1.b/>\n</permissions>\n</behaviorContent>\n");
}
