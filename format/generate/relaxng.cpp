// SPDX-License-Identifier: Apache-2.0
#include "files.hpp"
#include "xmlwriter.hpp"

using namespace vesk::format;

namespace
{
class RelaxNg : public XmlWriter
{
public:
  using XmlWriter::XmlWriter;

  void addGrammar()
  {
    xml.writeStartDocument();
    xml.writeComment(QStringLiteral(" SPDX-License-Identifier: Apache-2.0 "));
    xml.writeComment(
        QStringLiteral(" The manifest of a package, for validators and editors, made from "
                       "format/. manifest.xsd says the same in XSD 1.0. "));
    add("grammar",
        {{"xmlns", "http://relaxng.org/ns/structure/1.0"},
         {"xmlns:a", "http://relaxng.org/ns/compatibility/annotations/1.0"},
         {"datatypeLibrary", "http://www.w3.org/2001/XMLSchema-datatypes"}},
        [this]
        {
          add("start", {}, [this] { addElement(package()); });
          add("define", {{"name", "notEmpty"}},
              [this] {
                add("data", {{"type", "token"}},
                    [this] {
                      addText("param", {{"name", "minLength"}}, "1");
                    });
              });
        });
    xml.writeEndDocument();
  }

private:
  void addDocumentation(const std::string& text) { addText("a:documentation", {}, text); }

  void addElement(const Element& element)
  {
    add("element", {{"name", element.name}},
        [&]
        {
          addDocumentation(element.meaning);
          for (const Attribute& attribute : element.attributes)
          {
            addAttribute(attribute);
          }
          if (&element == &package())
          {
            addSchemaLocations();
          }
          addContent(element);
        });
  }

  void addAttribute(const Attribute& attribute)
  {
    addUnless(attribute.isRequired, "optional",
              [&]
              {
                add("attribute", {{"name", attribute.name}},
                    [&]
                    {
                      addDocumentation(attribute.meaning);
                      addValue(attribute);
                    });
              });
  }

  /// The text of an element or the value of an attribute.
  void addValue(const Entry& entry)
  {
    if (!entry.usual.empty())
    {
      add("choice", {},
          [&]
          {
            for (const std::string& value : entry.usual)
            {
              addText("value", {{"type", "string"}}, value);
            }
            if (entry.type != Type::Flag)
            {
              addAnyText(entry);
            }
          });
    }
    else
    {
      addAnyText(entry);
    }
  }

  void addAnyText(const Entry& entry)
  {
    if (entry.isRequired)
    {
      add("ref", {{"name", "notEmpty"}});
    }
    else
    {
      add("text");
    }
  }

  void addContent(const Element& element)
  {
    switch (element.holds)
    {
    case Holds::Nothing:
    case Holds::Presence:
      add("empty");
      break;
    case Holds::Text:
      addValue(element);
      break;
    case Holds::Elements:
    case Holds::Entries:
    case Holds::Names:
      addUnless(element.children.size() == 1, "interleave", [&] { addChildren(element); });
      break;
    }
  }

  void addChildren(const Element& parent)
  {
    const auto [single, repeatable] = childrenOf(parent);
    for (const Element* const child : single)
    {
      addUnless(child->isRequired, "optional", [&] { addElement(*child); });
    }
    if (!repeatable.empty())
    {
      add("zeroOrMore", {},
          [&, &items = repeatable]
          {
            add("choice", {},
                [&]
                {
                  for (const Element* const child : items)
                  {
                    addElement(*child);
                  }
                });
          });
    }
  }

  /// XSD allows them everywhere by itself.
  void addSchemaLocations()
  {
    for (const char* const name : {"noNamespaceSchemaLocation", "schemaLocation"})
    {
      add("optional", {},
          [&]
          {
            add("attribute", {{"name", name}, {"ns", "http://www.w3.org/2001/XMLSchema-instance"}},
                [&] { addDocumentation("Where the XSD is that the manifest follows."); });
          });
    }
  }

  template <typename Content>
  void addUnless(bool isSo, const char* name, Content content)
  {
    isSo ? content() : add(name, {}, content);
  }
};
} // namespace

QString relaxNg()
{
  QByteArray text;
  RelaxNg(text).addGrammar();
  return QString::fromUtf8(text);
}
