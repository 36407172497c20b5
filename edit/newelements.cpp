// SPDX-License-Identifier: Apache-2.0
#include <edit/entries.hpp>
#include <edit/failing.hpp>
#include <edit/newelements.hpp>

#include <algorithm>

namespace vesk::edit
{

using format::Element;
using format::Holds;
using format::Role;
using format::Written;
using source::NewElement;

namespace
{
/// An element with what a record says in its attributes and children.
NewElement elementWith(const Element& element, const AnyConstReference& record)
{
  NewElement made;
  made.name = element.name;
  for (const format::Attribute& attribute : element.attributes)
  {
    const std::string value = asText(record.member(attribute.field.registered));
    if (!value.empty() || attribute.written == Written::Always)
    {
      made.attributes.emplace_back(attribute.name, value);
    }
  }
  for (const Element& child : element.children)
  {
    for (NewElement& inner : newElements(child, record))
    {
      made.children.push_back(std::move(inner));
    }
  }
  return made;
}

const std::string& writable(const std::string& text)
{
  try
  {
    source::requireXmlCharacters(text);
  }
  catch (const std::invalid_argument& fault)
  {
    throw UnwritableText(text, fault.what());
  }
  return text;
}

/// Readers know no other elements than those in the format.
void requireKnown(const std::string& name, const Element& holder)
{
  std::vector<std::string> names;
  for (const Element& known : holder.children)
  {
    names.push_back(known.name);
  }
  if (std::find(names.begin(), names.end(), name) == names.end())
  {
    throw UnwritableText(name,
                         '"' + name + "\" is unknown; there are " + choiceInsteadOf(name, names));
  }
}

bool isEmpty(const NewElement& element)
{
  return element.attributes.empty() && element.text.empty() && element.children.empty();
}

std::vector<NewElement> unlessLeftOut(NewElement element, Written written)
{
  return written == Written::Always || !isEmpty(element) ? std::vector{std::move(element)}
                                                         : std::vector<NewElement>();
}

std::vector<NewElement> entriesOf(const Element& element, const AnyConstReference& field)
{
  std::vector<NewElement> entries;
  for (const auto& [key, values] : valuesIn(field))
  {
    for (const AnyConstReference& value : values)
    {
      entries.push_back(newEntry(element, key, value));
    }
  }
  if (!isContainer(element))
  {
    return entries;
  }
  return unlessLeftOut({element.name, {}, "", std::move(entries)}, element.written);
}
} // namespace

std::vector<NewElement> newElements(const Element& element, const AnyConstReference& record)
{
  if (element.field.name.empty())
  {
    return unlessLeftOut(elementWith(element, record), element.written);
  }
  const AnyConstReference field = record.member(element.field.registered);
  switch (field.type()->kind())
  {
  case TypeKind::Bool:
    return field.as<bool>() ? std::vector{NewElement{element.name, {}, "", {}}}
                            : std::vector<NewElement>();
  case TypeKind::String:
    return unlessLeftOut({element.name, {}, asText(field), {}}, element.written);
  case TypeKind::Dynamic: {
    const AnyConstReference held(field.as<AnyValue>());
    return held.isValid() ? std::vector{elementWith(element, held)} : std::vector<NewElement>();
  }
  default:
    return entriesOf(element, field);
  }
}

NewElement newEntry(const Element& holder, const std::string& key, const AnyConstReference& value)
{
  const Element& format = entryFormat(holder);
  if (value.type()->kind() == TypeKind::Struct)
  {
    return elementWith(format, value);
  }
  if (holder.holds == Holds::Names)
  {
    requireKnown(asText(value), holder);
    return {asText(value), {}, "", {}};
  }
  NewElement entry{format.name, {}, "", {}, format.isCdata};
  for (const format::Attribute& attribute : format.attributes)
  {
    const std::string text = attribute.role == Role::Key ? writable(key) : asText(value);
    if (!text.empty() || attribute.written == Written::Always)
    {
      entry.attributes.emplace_back(attribute.name, text);
    }
  }
  entry.text = format.holds == Holds::Text ? asText(value) : "";
  return entry;
}

std::string asText(const AnyConstReference& value)
{
  if (value.is<bool>())
  {
    return value.as<bool>() ? "true" : "false";
  }
  return writable(value.as<std::string>());
}

} // namespace vesk::edit
