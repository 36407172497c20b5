// SPDX-License-Identifier: Apache-2.0
#include <format/describe.hpp>
#include <format/format.hpp>

#include <QXmlStreamWriter>

#include <algorithm>

namespace vesk::format
{
namespace
{
const Element* childNamed(const Element& parent, std::string_view name)
{
  const auto child = std::find_if(parent.children.begin(), parent.children.end(),
                                  [name](const Element& other) { return other.name == name; });
  return child == parent.children.end() ? nullptr : &*child;
}

void collectHomes(const Element& parent, std::string_view name, std::vector<const Element*>& homes)
{
  const bool isKnown = std::any_of(homes.begin(), homes.end(),
                                   [&](const Element* home) { return home->name == parent.name; });
  if (!isKnown && childNamed(parent, name) != nullptr)
  {
    homes.push_back(&parent);
  }
  for (const Element& child : parent.children)
  {
    collectHomes(child, name, homes);
  }
}

/// Calls \p visit with the place of every field at an element or below.
template <typename Visit>
void visitFields(const Element& element, const Visit& visit)
{
  if (!element.field.name.empty())
  {
    visit(element.field, Place{&element, nullptr});
  }
  for (const Attribute& attribute : element.attributes)
  {
    if (!attribute.field.name.empty())
    {
      visit(attribute.field, Place{&element, &attribute});
    }
  }
  for (const Element& child : element.children)
  {
    visitFields(child, visit);
  }
}

void writeExample(QXmlStreamWriter& xml, const Element& element)
{
  const auto toolkits = [](const std::string& text) { return QString::fromStdString(text); };
  xml.writeStartElement(toolkits(element.name));
  for (const Attribute& attribute : element.attributes)
  {
    xml.writeAttribute(toolkits(attribute.name), toolkits(attribute.example));
  }
  if (element.isCdata)
  {
    xml.writeCDATA(toolkits(element.example));
  }
  else if (!element.example.empty())
  {
    xml.writeCharacters(toolkits(element.example));
  }
  for (const Element& child : element.children)
  {
    writeExample(xml, child);
  }
  xml.writeEndElement();
}
} // namespace

const Element& package()
{
  static const Element& root = *new Element(describePackage()); // never destroyed
  return root;
}

const Element* find(std::string_view path)
{
  const Element* element = nullptr;
  while (!path.empty() && path.front() == '/')
  {
    path.remove_prefix(1);
    const std::string_view name = path.substr(0, path.find('/'));
    path.remove_prefix(name.size());
    if (element == nullptr)
    {
      element = name == package().name ? &package() : nullptr;
    }
    else
    {
      element = childNamed(*element, name);
    }
    if (element == nullptr)
    {
      return nullptr;
    }
  }
  return path.empty() ? element : nullptr;
}

std::vector<const Element*> homesOf(std::string_view name)
{
  std::vector<const Element*> homes;
  collectHomes(package(), name, homes);
  return homes;
}

std::vector<Field> fields()
{
  std::vector<Field> all;
  visitFields(package(), [&all](const Field& field, const Place&) { all.push_back(field); });
  return all;
}

Place placeOf(const std::string& record, const std::string& registered)
{
  Place found;
  visitFields(package(),
              [&](const Field& field, const Place& place)
              {
                if (field.record == record && field.registered == registered)
                {
                  found = place;
                }
              });
  return found;
}

const Attribute* attributeFor(const Element& element, Role role)
{
  const auto attribute =
      std::find_if(element.attributes.begin(), element.attributes.end(),
                   [role](const Attribute& other) { return other.role == role; });
  return attribute == element.attributes.end() ? nullptr : &*attribute;
}

std::string exampleOf(const Element& element)
{
  QString text;
  QXmlStreamWriter xml(&text);
  xml.setAutoFormatting(true);
  xml.setAutoFormattingIndent(2);
  writeExample(xml, element);
  return text.trimmed().toStdString();
}

} // namespace vesk::format
