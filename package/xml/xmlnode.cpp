// SPDX-License-Identifier: Apache-2.0
#include <package/xml/reading.hpp>
#include <package/xml/text.hpp>
#include <package/xml/xmlnode.hpp>

#include <QDomElement>

namespace vesk
{
namespace
{
void appendText(const source::Node& element, std::string& text)
{
  for (const source::Node& child : element.children())
  {
    if (child.isElement())
    {
      appendText(child, text);
    }
    else if (child.kind() == source::Kind::Text || child.kind() == source::Kind::CData)
    {
      text += child.value();
    }
  }
}
} // namespace

bool XmlNode::isNamed(const XmlName& name) const
{
  return inSource != nullptr ? inSource->name() == name.inUtf8() : inToolkit.nodeName() == name;
}

std::string XmlNode::name() const
{
  return inSource != nullptr ? std::string(inSource->name()) : fromQString(inToolkit.nodeName());
}

std::string XmlNode::attribute(const XmlName& name) const
{
  if (inSource == nullptr)
  {
    return fromQString(inToolkit.toElement().attribute(name));
  }
  const source::Attribute* const found = inSource->attribute(name.inUtf8());
  return found != nullptr ? std::string(found->value()) : std::string();
}

std::string XmlNode::text() const
{
  if (inSource == nullptr)
  {
    return textOf(inToolkit.toElement());
  }
  std::string text;
  appendText(*inSource, text);
  return text;
}

XmlNode XmlNode::firstChild() const
{
  return inSource != nullptr ? XmlNode(inSource->firstChild()) : XmlNode(inToolkit.firstChild());
}

XmlNode XmlNode::nextSibling() const
{
  return inSource != nullptr ? XmlNode(inSource->next()) : XmlNode(inToolkit.nextSibling());
}

} // namespace vesk
