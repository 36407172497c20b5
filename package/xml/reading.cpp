// SPDX-License-Identifier: Apache-2.0
#include <package/xml/reading.hpp>
#include <package/xml/text.hpp>

#include <QDomElement>

namespace vesk
{

namespace
{
void appendText(const QDomElement& element, QString& text)
{
  for (const QDomNode& child : Children(element))
  {
    if (child.isText())
    {
      text += child.nodeValue();
    }
    else if (child.isElement())
    {
      appendText(child.toElement(), text);
    }
  }
}
} // namespace

// The toolkit's text() copies the text once for every level of nesting.
QString textIn(const QDomElement& element)
{
  QString text;
  appendText(element, text);
  return text;
}

std::string textOf(const QDomElement& element) { return fromQString(textIn(element)); }

void readLocalizedTexts(const XmlNode& group, std::map<std::string, std::string>& texts)
{
  const ManifestNames& names = manifestNames();
  for (const XmlNode& child : Children(group))
  {
    texts[child.attribute(names.lang)] = child.text();
  }
}

void readTextLists(const XmlNode& group, const XmlName& keyAttribute,
                   std::map<std::string, std::list<std::string>>& lists)
{
  for (const XmlNode& child : Children(group))
  {
    lists[child.attribute(keyAttribute)].push_back(child.text());
  }
}

} // namespace vesk
