// SPDX-License-Identifier: Apache-2.0
#include <package/xml/serializing.hpp>

#include <package/xml/reading.hpp>

#include <QDomDocument>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace vesk
{
namespace
{
enum class Context
{
  Text,
  Attribute
};

/// What the character at \p at is written as; empty where it is written as it stands.
std::string_view escapeAt(std::string_view text, std::size_t at, Context context)
{
  const bool inAttribute = context == Context::Attribute;
  switch (text[at])
  {
  case '<':
    return "&lt;";
  case '&':
    return "&amp;";
  case '>':
    return at >= 2 && text[at - 1] == ']' && text[at - 2] == ']' ? "&gt;" : "";
  case '"':
    return inAttribute ? "&quot;" : "";
  case '\r': // as such it would be read as the end of a line
    return "&#xd;";
  case '\n': // in an attribute as such, they would be read as blanks
    return inAttribute ? "&#xa;" : "";
  case '\t':
    return inAttribute ? "&#x9;" : "";
  default:
    return "";
  }
}

class Serializer
{
public:
  explicit Serializer(int indentation) : indent(indentation) {}

  std::string take() { return std::move(out); }

  void addNode(const QDomNode& node, int depth)
  {
    if (node.isElement())
    {
      addElement(node.toElement(), depth);
    }
    else if (node.isCDATASection())
    {
      out += "<![CDATA[";
      add(node.nodeValue());
      out += "]]>";
    }
    else if (node.isText())
    {
      addEscaped(node.nodeValue(), Context::Text);
    }
    else if (node.isProcessingInstruction())
    {
      out += "<?";
      add(node.nodeName());
      out += ' ';
      add(node.nodeValue());
      out += "?>\n";
    }
  }

private:
  // White space around an element would become part of a text beside it, so none is added there.
  void addElement(const QDomElement& element, int depth)
  {
    const QByteArray tag = element.tagName().toUtf8();
    if (!element.previousSibling().isText())
    {
      addIndentation(depth);
    }
    out += '<';
    out.append(tag.constData(), static_cast<std::size_t>(tag.size()));
    addAttributes(element);
    if (element.hasChildNodes())
    {
      out += '>';
      if (!element.firstChild().isText())
      {
        out += '\n';
      }
      forEachChild(element, [&](const QDomNode& child) { addNode(child, depth + 1); });
      if (!element.lastChild().isText())
      {
        addIndentation(depth);
      }
      out += "</";
      out.append(tag.constData(), static_cast<std::size_t>(tag.size()));
      out += '>';
    }
    else
    {
      out += "/>";
    }
    if (!element.nextSibling().isText())
    {
      out += '\n';
    }
  }

  void addAttributes(const QDomElement& element)
  {
    const QDomNamedNodeMap map = element.attributes();
    std::vector<std::pair<QString, QString>> attributes;
    attributes.reserve(static_cast<std::size_t>(map.count()));
    for (int i = 0; i < map.count(); ++i)
    {
      const QDomNode attribute = map.item(i);
      attributes.emplace_back(attribute.nodeName(), attribute.nodeValue());
    }
    std::sort(attributes.begin(), attributes.end());
    for (const auto& [name, value] : attributes)
    {
      out += ' ';
      add(name);
      out += "=\"";
      addEscaped(value, Context::Attribute);
      out += '"';
    }
  }

  void addIndentation(int depth) { out.append(static_cast<std::size_t>(depth * indent), ' '); }

  void add(const QString& text)
  {
    const QByteArray utf8 = text.toUtf8();
    out.append(utf8.constData(), static_cast<std::size_t>(utf8.size()));
  }

  void addEscaped(const QString& text, Context context)
  {
    const QByteArray bytes = text.toUtf8();
    const std::string_view utf8(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    std::size_t written = 0;
    for (std::size_t at = 0; at < utf8.size(); ++at)
    {
      if (const std::string_view escape = escapeAt(utf8, at, context); !escape.empty())
      {
        out += utf8.substr(written, at - written);
        out += escape;
        written = at + 1;
      }
    }
    out += utf8.substr(written);
  }

  std::string out;
  int indent;
};
} // namespace

std::string serialize(const QDomDocument& document, int indent)
{
  Serializer serializer(indent);
  forEachChild(document, [&](const QDomNode& node) { serializer.addNode(node, 0); });
  return serializer.take();
}

} // namespace vesk
