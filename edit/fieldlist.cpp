// SPDX-License-Identifier: Apache-2.0
#include <edit/fieldlist.hpp>
#include <edit/manifest.hpp>
#include <edit/membername.hpp>
#include <edit/memberplace.hpp>
#include <format/format.hpp>
#include <package/manifest2/webinfo.hpp>

#include <cctype>
#include <utility>

namespace vesk::edit
{
namespace
{
using format::Holds;
using format::Place;
using format::Role;

/// The path of an element at \p root, which is at \p path, or below; empty when it is not there.
std::string pathTo(const format::Element& element, const format::Element& root,
                   const std::string& path)
{
  if (&element == &root)
  {
    return path;
  }
  for (const format::Element& child : root.children)
  {
    std::string found = pathTo(element, child, path + '/' + child.name);
    if (!found.empty())
    {
      return found;
    }
  }
  return {};
}

std::string textOf(const Place& place)
{
  if (place.element == nullptr)
  {
    return {};
  }
  const format::Element& element = *place.element;
  std::string path = pathTo(element, format::package(), '/' + format::package().name);
  const format::Attribute* const value =
      place.attribute != nullptr ? place.attribute : format::attributeFor(element, Role::Value);
  if (value != nullptr)
  {
    return path + "/@" + value->name;
  }
  switch (element.holds)
  {
  case Holds::Entries:
    return path + '/' + element.children.front().name;
  case Holds::Names:
    return path + "/*";
  case Holds::Nothing:
  case Holds::Presence:
  case Holds::Text:
  case Holds::Elements:
    break;
  }
  return path;
}

/// What the keys of a map are: "language".
std::string keyIn(const Place& place)
{
  if (place.element == nullptr)
  {
    return "text";
  }
  const format::Element& element = *place.element;
  const format::Attribute* const key = format::attributeFor(
      element.holds == Holds::Entries ? element.children.front() : element, Role::Key);
  return key->type == format::Type::Language ? "language" : key->name;
}

const TypeInterface& elementOf(const TypeInterface& list)
{
  return *static_cast<const ListTypeInterface&>(list).elementType();
}

const TypeInterface& valueOf(const TypeInterface& map)
{
  return *static_cast<const MapTypeInterface&>(map).valueType();
}

std::string typeText(const TypeInterface& type, const Place& place, const std::string& plural = "")
{
  switch (type.kind())
  {
  case TypeKind::String:
    return "text" + plural;
  case TypeKind::Bool:
    return "true or false";
  case TypeKind::Integer:
  case TypeKind::Float:
    return "number" + plural;
  case TypeKind::List:
    return "list" + plural + " of " + typeText(elementOf(type), place, "s");
  case TypeKind::Map:
    return "map" + plural + " from " + keyIn(place) + " to " + typeText(valueOf(type), place);
  case TypeKind::Struct:
    return "record" + plural;
  case TypeKind::Dynamic:
  case TypeKind::Unknown:
    break;
  }
  return "value" + plural;
}

/// The steps from a field to its innermost parts: ".LANGUAGE[*]".
std::string stepsIn(const TypeInterface& type, const Place& place)
{
  if (type.kind() == TypeKind::List)
  {
    return "[*]" + stepsIn(elementOf(type), place);
  }
  if (type.kind() == TypeKind::Map)
  {
    std::string key = keyIn(place);
    for (char& letter : key)
    {
      letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    }
    return '.' + key + stepsIn(valueOf(type), place);
  }
  return {};
}

/// Adds the members of a record; \p start is what their paths start with.
void addMembers(const StructTypeInterface& record, const std::string& start,
                std::vector<ListedField>& all)
{
  for (std::size_t i = 0; i < record.memberNames().size(); ++i)
  {
    const std::string& name = record.memberNames()[i];
    const TypeInterface* type = record.memberTypes()[i];
    if (type->kind() == TypeKind::Dynamic) // the only one is the web content
    {
      type = typeOf<WebInfo>();
    }
    const Place place = placeOfMember(record, name);
    ListedField field{start + friendlyName(record, name), {}, textOf(place), {}, {}};
    field.type = typeText(*type, place);
    if (place.element != nullptr)
    {
      const format::Entry& entry = place.attribute != nullptr
                                       ? static_cast<const format::Entry&>(*place.attribute)
                                       : *place.element;
      field.meaning = entry.meaning;
      field.absent = entry.absent;
      field.path += stepsIn(*type, place);
    }
    const std::string path = field.path;
    all.push_back(std::move(field));
    while (type->kind() == TypeKind::List)
    {
      type = &elementOf(*type);
    }
    if (type->kind() == TypeKind::Struct)
    {
      addMembers(static_cast<const StructTypeInterface&>(*type), path + '.', all);
    }
  }
}
} // namespace

std::vector<ListedField> listedFields()
{
  std::vector<ListedField> all;
  addMembers(*static_cast<StructTypeInterface*>(typeOf<Manifest>()), {}, all);
  return all;
}

} // namespace vesk::edit
