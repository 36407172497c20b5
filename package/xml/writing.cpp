// SPDX-License-Identifier: Apache-2.0
#include <package/xml/text.hpp>
#include <package/xml/writing.hpp>

#include <QDomDocument>

namespace vesk
{

QDomElement createElement(QDomDocument& doc, const XmlName& tag) { return doc.createElement(tag); }

QDomElement appendElement(QDomDocument& doc, QDomNode& parent, const XmlName& tag)
{
  QDomElement element = createElement(doc, tag);
  parent.appendChild(element);
  return element;
}

void setAttribute(QDomElement& element, const XmlName& name, const std::string& value)
{
  element.setAttribute(name, toXmlText(value));
}

void addAttribute(QDomElement& element, const XmlName& name, const std::string& value)
{
  if (!value.empty())
  {
    setAttribute(element, name, value);
  }
}

void addTextNode(QDomDocument& doc, QDomElement& element, const std::string& text)
{
  element.appendChild(doc.createTextNode(toXmlText(text)));
}

void addCDATANode(QDomDocument& doc, QDomElement& element, const std::string& text)
{
  const QString end = QStringLiteral("]]>");
  const QString all = toXmlText(text);
  int begin = 0;
  for (int at = all.indexOf(end); at != -1; at = all.indexOf(end, begin))
  {
    element.appendChild(doc.createCDATASection(all.mid(begin, at + 2 - begin)));
    begin = at + 2;
  }
  element.appendChild(doc.createCDATASection(all.mid(begin)));
}

void addLocalizedDataElement(QDomDocument& doc, QDomNode& parent,
                             const std::map<std::string, std::string>& texts,
                             const XmlName& groupTag, const XmlName& itemTag,
                             const XmlName& attribute)
{
  if (texts.empty())
  {
    return;
  }
  QDomElement group = appendElement(doc, parent, groupTag);
  for (const auto& [key, text] : texts)
  {
    if (!text.empty())
    {
      QDomElement item = appendElement(doc, group, itemTag);
      addAttribute(item, attribute, key);
      addTextNode(doc, item, text);
    }
  }
}

void addDataListElementWithAttribute(QDomDocument& doc, QDomNode& parent,
                                     const std::map<std::string, std::list<std::string>>& lists,
                                     const XmlName& groupTag, const XmlName& itemTag,
                                     const XmlName& attribute, bool useCDATA)
{
  if (lists.empty())
  {
    return;
  }
  QDomElement group = appendElement(doc, parent, groupTag);
  for (const auto& [key, texts] : lists)
  {
    for (const std::string& text : texts)
    {
      if (!text.empty())
      {
        QDomElement item = appendElement(doc, group, itemTag);
        addAttribute(item, attribute, key);
        const auto addText = useCDATA ? addCDATANode : addTextNode;
        addText(doc, item, text);
      }
    }
  }
}

} // namespace vesk
