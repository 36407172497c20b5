// SPDX-License-Identifier: Apache-2.0
#include "files.hpp"
#include "xmlwriter.hpp"

#include <stdexcept>

using namespace vesk::format;

namespace
{
/// Every element has a type that is named by its place: XSD wants elements of one name that stand beside
/// each other to have one type, by name.
class XmlSchema : public XmlWriter
{
public:
  using XmlWriter::XmlWriter;

  void addSchema()
  {
    xml.writeStartDocument();
    xml.writeComment(QStringLiteral(" SPDX-License-Identifier: Apache-2.0 "));
    xml.writeComment(
        QStringLiteral(" The manifest of a package, for validators and editors, made from "
                       "format/. manifest.rng says the same in RELAX NG. "));
    add("xs:schema", {{"xmlns:xs", "http://www.w3.org/2001/XMLSchema"}},
        [this]
        {
          addElement(package(), package().name, {});
          addType(package(), package().name);
          addSimpleType("notEmpty", "xs:token", "xs:minLength", "1");
          xml.writeComment(
              QStringLiteral(" Unlike an empty complex type it allows a line break between the "
                             "tags, as the readers do. "));
          addSimpleType("nothing", "xs:token", "xs:length", "0");
        });
    xml.writeEndDocument();
  }

private:
  void addSimpleType(const char* name, const char* base, const char* facet, const char* value)
  {
    add("xs:simpleType", {{"name", name}},
        [&] {
          add("xs:restriction", {{"base", base}}, [&] { add(facet, {{"value", value}}); });
        });
  }

  void addDocumentation(const std::string& text)
  {
    add("xs:annotation", {}, [&] { addText("xs:documentation", {}, text); });
  }

  static bool isNested(const Element& element)
  {
    return !element.attributes.empty() || !element.children.empty();
  }

  /// The type of a text, or of an element without attributes.
  static std::string simpleTypeOf(const Entry& entry)
  {
    return entry.isRequired ? "notEmpty" : "xs:string";
  }

  static std::string simpleTypeIn(const Element& element)
  {
    return element.holds == Holds::Text ? simpleTypeOf(element) : "nothing";
  }

  void addElement(const Element& element, const std::string& place, Attributes occurrence)
  {
    Attributes attributes{{"name", element.name}};
    if (isNested(element))
    {
      attributes.emplace_back("type", place);
    }
    else if (element.usual.empty())
    {
      attributes.emplace_back("type", simpleTypeIn(element));
    }
    attributes.insert(attributes.end(), occurrence.begin(), occurrence.end());
    add("xs:element", attributes,
        [&]
        {
          addDocumentation(element.meaning);
          if (!isNested(element)) // else its type takes any text
          {
            addUsual(element);
          }
        });
  }

  /// The values that are known, and any other text where that is allowed.
  void addUsual(const Entry& entry)
  {
    if (entry.usual.empty())
    {
      return;
    }
    const auto addKnown = [&]
    {
      add("xs:restriction", {{"base", "xs:string"}},
          [&]
          {
            for (const std::string& value : entry.usual)
            {
              add("xs:enumeration", {{"value", value}});
            }
          });
    };
    const auto addKnownOrAny = [&]
    {
      add("xs:union", {{"memberTypes", simpleTypeOf(entry)}},
          [&] { add("xs:simpleType", {}, addKnown); });
    };
    entry.type == Type::Flag ? add("xs:simpleType", {}, addKnown)
                             : add("xs:simpleType", {}, addKnownOrAny);
  }

  /// The types of an element and of all below it.
  void addType(const Element& element, const std::string& place)
  {
    if (isNested(element))
    {
      add("xs:complexType", {{"name", place}}, [&] { addContent(element, place); });
    }
    for (const Element& child : element.children)
    {
      addType(child, place + '.' + child.name);
    }
  }

  void addContent(const Element& element, const std::string& place)
  {
    if (!element.children.empty())
    {
      addChildren(element, place);
      addAttributes(element);
      return;
    }
    add("xs:simpleContent", {},
        [&] {
          add("xs:extension", {{"base", simpleTypeIn(element)}}, [&] { addAttributes(element); });
        });
  }

  void addAttributes(const Element& element)
  {
    for (const Attribute& attribute : element.attributes)
    {
      Attributes properties{{"name", attribute.name}};
      if (attribute.usual.empty())
      {
        properties.emplace_back("type", simpleTypeOf(attribute));
      }
      if (attribute.isRequired)
      {
        properties.emplace_back("use", "required");
      }
      add("xs:attribute", properties,
          [&]
          {
            addDocumentation(attribute.meaning);
            addUsual(attribute);
          });
    }
  }

  void addChildren(const Element& parent, const std::string& place)
  {
    const auto [single, repeatable] = childrenOf(parent);
    const Attributes anyNumber{{"minOccurs", "0"}, {"maxOccurs", "unbounded"}};
    const Attributes optional{{"minOccurs", "0"}};
    const auto addSingle = [&](const Element& child)
    { addElement(child, place + '.' + child.name, child.isRequired ? Attributes() : optional); };
    const auto addRepeatable = [&, &items = repeatable]
    {
      add("xs:choice", anyNumber,
          [&]
          {
            for (const Element* const child : items)
            {
              addElement(*child, place + '.' + child->name, {});
            }
          });
    };
    if (single.empty())
    {
      addRepeatable();
    }
    else if (repeatable.empty())
    {
      add("xs:all", {},
          [&, &items = single]
          {
            for (const Element* const child : items)
            {
              addSingle(*child);
            }
          });
    }
    else if (single.size() == 1) // anywhere among those that are repeated
    {
      add("xs:sequence", {},
          [&, &child = *single.front()]
          {
            addRepeatable();
            add("xs:sequence", child.isRequired ? Attributes() : optional,
                [&]
                {
                  addElement(child, place + '.' + child.name, {});
                  addRepeatable();
                });
          });
    }
    else
    {
      throw std::logic_error("XSD 1.0 cannot have several single elements among repeated ones: " +
                             place);
    }
  }
};
} // namespace

QString xmlSchema()
{
  QByteArray text;
  XmlSchema(text).addSchema();
  return QString::fromUtf8(text);
}
