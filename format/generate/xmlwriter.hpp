// SPDX-License-Identifier: Apache-2.0
#ifndef FORMAT_GENERATE_XMLWRITER_HPP
#define FORMAT_GENERATE_XMLWRITER_HPP

#include <format/format.hpp>

#include <QXmlStreamWriter>

#include <string>
#include <utility>
#include <vector>

/// Writes a schema, nested as the code is.
class XmlWriter
{
public:
  explicit XmlWriter(QByteArray& text) : xml(&text)
  {
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
  }

protected:
  using Attributes = std::vector<std::pair<const char*, std::string>>;

  /// An element with what \p content adds.
  template <typename Content>
  void add(const char* name, const Attributes& attributes, Content content)
  {
    xml.writeStartElement(QString::fromLatin1(name));
    for (const auto& [attribute, value] : attributes)
    {
      xml.writeAttribute(QString::fromLatin1(attribute), QString::fromStdString(value));
    }
    content();
    xml.writeEndElement();
  }

  void add(const char* name, const Attributes& attributes = {})
  {
    add(name, attributes, [] {});
  }

  void addText(const char* name, const Attributes& attributes, const std::string& text)
  {
    add(name, attributes, [&] { xml.writeCharacters(QString::fromStdString(text)); });
  }

  struct Children
  {
    std::vector<const vesk::format::Element*> single;
    std::vector<const vesk::format::Element*> repeatable;
  };

  /// The children of an element, split into those that may be repeated and the others.
  static Children childrenOf(const vesk::format::Element& element)
  {
    Children children;
    for (const vesk::format::Element& child : element.children)
    {
      (child.isRepeatable ? children.repeatable : children.single).push_back(&child);
    }
    return children;
  }

  QXmlStreamWriter xml;
};

#endif
