// SPDX-License-Identifier: Apache-2.0
#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>
#include <package/xml/text.hpp>

#include <QDomElement>

namespace vesk
{

std::string attributeOf(const QDomElement& element, const QString& name)
{
  return fromQString(element.attribute(name));
}

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

void readLocalizedTexts(const QDomNode& group, std::map<std::string, std::string>& texts)
{
  const ManifestNames& names = manifestNames();
  for (const QDomNode& child : Children(group))
  {
    const QDomElement item = child.toElement();
    texts[attributeOf(item, names.lang)] = textOf(item);
  }
}

void readTextLists(const QDomNode& group, const QString& keyAttribute,
                   std::map<std::string, std::list<std::string>>& lists)
{
  for (const QDomNode& child : Children(group))
  {
    const QDomElement item = child.toElement();
    lists[attributeOf(item, keyAttribute)].push_back(textOf(item));
  }
}

} // namespace vesk
