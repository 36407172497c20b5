// SPDX-License-Identifier: Apache-2.0
#include <check/node.hpp>

#include <QDomElement>

#include <algorithm>

namespace vesk::check
{
namespace
{
using source::Kind;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// All of a text, also a byte order mark at its start, which the conversion would drop.
QString toolkits(std::string_view text)
{
  const bool hasMark = text.substr(0, byteOrderMark.size()) == byteOrderMark;
  text.remove_prefix(hasMark ? byteOrderMark.size() : 0);
  const QString rest = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
  return hasMark ? QChar(QChar::ByteOrderMark) + rest : rest;
}
} // namespace

bool Node::isElement() const
{
  const source::Node* const inSource = node.nodeInSource();
  return inSource != nullptr ? inSource->isElement() : node.nodeInToolkit().isElement();
}

bool Node::isText() const
{
  const source::Node* const inSource = node.nodeInSource();
  return inSource != nullptr ? inSource->kind() == Kind::Text || inSource->kind() == Kind::CData
                             : node.nodeInToolkit().isText();
}

bool Node::isCData() const
{
  const source::Node* const inSource = node.nodeInSource();
  return inSource != nullptr ? inSource->kind() == Kind::CData
                             : node.nodeInToolkit().isCDATASection();
}

bool Node::isComment() const
{
  const source::Node* const inSource = node.nodeInSource();
  return inSource != nullptr ? inSource->kind() == Kind::Comment : node.nodeInToolkit().isComment();
}

bool Node::isDeclaration() const
{
  const source::Node* const inSource = node.nodeInSource();
  return inSource != nullptr ? inSource->kind() == Kind::Declaration
                             : node.nodeInToolkit().nodeName() == QLatin1String("xml");
}

bool Node::isEntityReference() const
{
  const source::Node* const inSource = node.nodeInSource();
  return inSource != nullptr ? inSource->kind() == Kind::Reference
                             : node.nodeInToolkit().isEntityReference();
}

QString Node::name() const
{
  const source::Node* const inSource = node.nodeInSource();
  return inSource != nullptr ? toolkits(inSource->name()) : node.nodeInToolkit().nodeName();
}

QString Node::attribute(const XmlName& name, const QString& otherwise) const
{
  const source::Node* const inSource = node.nodeInSource();
  if (inSource == nullptr)
  {
    return node.nodeInToolkit().toElement().attribute(name, otherwise);
  }
  const source::Attribute* const found = inSource->attribute(name.inUtf8());
  return found != nullptr ? toolkits(found->value()) : otherwise;
}

bool Node::hasAttribute(const XmlName& name) const
{
  const source::Node* const tag = inText();
  return tag != nullptr ? tag->attribute(name.inUtf8()) != nullptr
                        : node.nodeInToolkit().toElement().hasAttribute(name);
}

QString Node::attributeInTag(const XmlName& name) const
{
  const source::Node* const tag = inText();
  const source::Attribute* const found = tag != nullptr ? tag->attribute(name.inUtf8()) : nullptr;
  return found != nullptr ? toolkits(found->value()) : attribute(name);
}

int Node::attributeCount() const
{
  const source::Node* const tag = inText();
  return tag != nullptr ? static_cast<int>(tag->attributes().end() - tag->attributes().begin())
                        : node.nodeInToolkit().attributes().count();
}

std::vector<QString> Node::attributeNames() const
{
  std::vector<QString> names;
  if (const source::Node* const tag = inText())
  {
    for (const source::Attribute& attribute : tag->attributes())
    {
      names.push_back(toolkits(attribute.name()));
    }
    return names;
  }
  const QDomNamedNodeMap attributes = node.nodeInToolkit().attributes();
  for (int i = 0; i < attributes.count(); ++i)
  {
    names.push_back(attributes.item(i).nodeName());
  }
  return names;
}

QString Node::text() const
{
  if (const source::Node* const inSource = node.nodeInSource())
  {
    return inSource->isElement() ? toolkits(node.text()) : toolkits(inSource->value());
  }
  const QDomNode& inToolkit = node.nodeInToolkit();
  return inToolkit.isElement() ? textIn(inToolkit.toElement()) : inToolkit.nodeValue();
}

Node Node::firstChild() const
{
  const XmlNode child = node.firstChild();
  return child.nodeInSource() != nullptr
             ? Node(child.nodeInSource())
             : Node(child.nodeInToolkit(), twins, twins != nullptr ? number + 1 : 0);
}

Node Node::nextSibling() const
{
  const XmlNode sibling = node.nextSibling();
  return sibling.nodeInSource() != nullptr
             ? Node(sibling.nodeInSource())
             : Node(sibling.nodeInToolkit(), twins, twins != nullptr ? (*twins)[number].next : 0);
}

const source::Node* Node::inText() const
{
  return twins != nullptr ? (*twins)[number].twin : node.nodeInSource();
}

int Node::toolkitsLine() const { return std::max(node.nodeInToolkit().lineNumber(), 0); }

int Node::toolkitsColumn() const { return std::max(node.nodeInToolkit().columnNumber(), 0); }

} // namespace vesk::check
