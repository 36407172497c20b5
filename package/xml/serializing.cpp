// SPDX-License-Identifier: Apache-2.0
#include <package/xml/serializing.hpp>
#include <package/xml/text.hpp>

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
  case '\r': // unescaped, it would be read as a line break
    return "&#xd;";
  case '\n': // unescaped in an attribute, these two would be read as blanks
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

  void addChildren(const QDomNode& parent, int depth)
  {
    QDomNode child = parent.firstChild();
    for (bool afterText = false; !child.isNull();)
    {
      const QDomNode next = child.nextSibling();
      addNode(child, depth, afterText, next.isText());
      afterText = child.isText();
      child = next;
    }
  }

private:
  void addNode(const QDomNode& node, int depth, bool afterText, bool beforeText)
  {
    if (node.isElement())
    {
      addElement(node.toElement(), depth, afterText, beforeText);
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

  // White space around an element would become part of a text beside it, so none is added there.
  void addElement(const QDomElement& element, int depth, bool afterText, bool beforeText)
  {
    const QString tag = element.tagName();
    if (!afterText)
    {
      addIndentation(depth);
    }
    out += '<';
    add(tag);
    addAttributes(element.attributes());
    if (const QDomNode first = element.firstChild(); !first.isNull())
    {
      out += first.isText() ? ">" : ">\n";
      addChildren(element, depth + 1);
      if (!element.lastChild().isText())
      {
        addIndentation(depth);
      }
      out += "</";
      add(tag);
      out += '>';
    }
    else
    {
      out += "/>";
    }
    if (!beforeText)
    {
      out += '\n';
    }
  }

  void addAttributes(const QDomNamedNodeMap& map)
  {
    const int count = map.count();
    if (count == 1) // as nearly always
    {
      addAttribute(map.item(0));
      return;
    }
    std::vector<QDomNode> attributes;
    attributes.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
    {
      attributes.push_back(map.item(i));
    }
    std::sort(attributes.begin(), attributes.end(),
              [](const QDomNode& left, const QDomNode& right)
              { return left.nodeName() < right.nodeName(); });
    std::for_each(attributes.begin(), attributes.end(),
                  [this](const QDomNode& attribute) { addAttribute(attribute); });
  }

  void addAttribute(const QDomNode& attribute)
  {
    out += ' ';
    add(attribute.nodeName());
    out += "=\"";
    addEscaped(attribute.nodeValue(), Context::Attribute);
    out += '"';
  }

  void addIndentation(int depth)
  {
    out.append(static_cast<std::size_t>(depth) * static_cast<std::size_t>(indent), ' ');
  }

  void add(const QString& text) { out += utf8Of(text); }

  void addEscaped(const QString& text, Context context)
  {
    const std::string_view utf8 = utf8Of(text);
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

  /// The text as UTF-8; valid until the next call.
  const std::string& utf8Of(const QString& text)
  {
    assignUtf8(utf8Buffer, text);
    return utf8Buffer;
  }

  std::string utf8Buffer;
  std::string out;
  int indent;
};
} // namespace

std::string serialize(const QDomDocument& document, int indent)
{
  Serializer serializer(indent);
  serializer.addChildren(document, 0);
  return serializer.take();
}

} // namespace vesk
