// SPDX-License-Identifier: Apache-2.0
#include <check/node.hpp>

#include <QDomElement>

#include <algorithm>

namespace vesk::check
{
namespace
{
using source::Kind;

/// All of a text, also a byte order mark at its start, which the conversion would drop.
QString toolkits(std::string_view text)
{
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  const bool hasMark = text.substr(0, mark.size()) == mark;
  text.remove_prefix(hasMark ? mark.size() : 0);
  const QString rest = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
  return hasMark ? QChar(QChar::ByteOrderMark) + rest : rest;
}

/// The character of a node's text at which the toolkit has taken notice of it.
std::uint32_t noticedAt(const source::Node& node)
{
  switch (node.kind())
  {
  case Kind::Element: // at the end of its start tag: ">", or "/" of an empty one
    return node.startTag().end - (node.endTag().size() == 0 ? 2 : 1);
  case Kind::CData:
    return node.range().end - 1;
  default:
    return node.range().end;
  }
}
} // namespace

Place Places::of(const source::Node& node) const
{
  const std::uint32_t offset = noticedAt(node);
  const int line = lines.placeOf(offset).line;
  const std::string_view text = document.text();
  const std::size_t begin = static_cast<std::size_t>(lines.line(line).data() - text.data());
  const std::string_view before = text.substr(begin, offset - begin);
  return {line, QString::fromUtf8(before.data(), static_cast<int>(before.size())).size() + 1};
}

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

std::vector<QString> Node::attributeNames() const
{
  std::vector<QString> names;
  if (const source::Node* const inSource = node.nodeInSource())
  {
    for (const source::Attribute& attribute : inSource->attributes())
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

Place Node::place() const
{
  if (const source::Node* const inSource = node.nodeInSource())
  {
    return places->of(*inSource);
  }
  const QDomNode& inToolkit = node.nodeInToolkit();
  return {std::max(inToolkit.lineNumber(), 0), std::max(inToolkit.columnNumber(), 0)};
}

} // namespace vesk::check
