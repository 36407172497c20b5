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
constexpr std::size_t blockSize = 1024;

/// How many UTF-16 units stand for the character that a byte of UTF-8 begins; 0 within one.
std::size_t unitsOf(char byte)
{
  const auto code = static_cast<unsigned char>(byte);
  return code >= 0xF0U ? 2 : (code & 0xC0U) == 0x80U ? 0 : 1;
}

/// All of a text, also a byte order mark at its start, which the conversion would drop.
QString toolkits(std::string_view text)
{
  const bool hasMark = text.substr(0, byteOrderMark.size()) == byteOrderMark;
  text.remove_prefix(hasMark ? byteOrderMark.size() : 0);
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

Place Places::of(const source::Node& node)
{
  if (lines.empty())
  {
    look();
  }
  const std::size_t offset = noticedAt(node);
  const auto line = std::prev(std::upper_bound(lines.begin(), lines.end(), offset));
  return {static_cast<int>(line - lines.begin()) + 1,
          static_cast<int>(unitsBefore(offset) - unitsBefore(*line)) + 1};
}

void Places::look()
{
  const bool hasMark = text.substr(0, byteOrderMark.size()) == byteOrderMark;
  lines.push_back(hasMark ? byteOrderMark.size() : 0);
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++at)
  {
    if (at % blockSize == 0)
    {
      units.push_back(count);
    }
    count += unitsOf(text[at]);
    if (text[at] == '\n')
    {
      lines.push_back(at + 1);
    }
  }
}

std::size_t Places::unitsBefore(std::size_t offset) const
{
  const std::size_t block = std::min(offset / blockSize, units.size() - 1);
  std::size_t count = units[block];
  for (const char c : text.substr(block * blockSize, offset - block * blockSize))
  {
    count += unitsOf(c);
  }
  return count;
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
