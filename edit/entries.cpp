// SPDX-License-Identifier: Apache-2.0
#include <edit/entries.hpp>

#include <algorithm>

namespace vesk::edit
{

using format::Element;
using format::Holds;
using format::Role;
using format::Several;
using source::Kind;
using source::Node;

namespace
{
std::string attributeText(const Node& node, const format::Attribute* attribute)
{
  const source::Attribute* const given =
      attribute != nullptr ? node.attribute(attribute->name) : nullptr;
  return given != nullptr ? std::string(given->value()) : std::string();
}

/// What an entry says beside its key; nothing of a record.
std::string contentOf(const Node& node, const Element& element)
{
  const Element& format = entryFormat(element);
  if (element.holds == Holds::Names)
  {
    return std::string(node.name());
  }
  const format::Attribute* const value = attributeFor(format, Role::Value);
  return value != nullptr              ? attributeText(node, value)
         : format.holds == Holds::Text ? textOf(node)
                                       : std::string();
}

/// The nodes that readers take for entries.
Nodes nodesIn(const Nodes& containers, const Element& element)
{
  if (!isContainer(element))
  {
    return childrenNamed(containers, element.name);
  }
  const auto isKnown = [&element](const Node& node)
  {
    return std::any_of(element.children.begin(), element.children.end(),
                       [&node](const Element& known) { return node.isElement(known.name); });
  };
  Nodes nodes;
  for (const Node* const container : containers)
  {
    for (const Node& child : container->children())
    {
      if (element.holds == Holds::Names ? isKnown(child) : !isBlankText(child))
      {
        nodes.push_back(&child);
      }
    }
  }
  return nodes;
}
} // namespace

bool isContainer(const Element& element)
{
  return element.holds == Holds::Entries || element.holds == Holds::Names;
}

const Element& entryFormat(const Element& element)
{
  return isContainer(element) ? element.children.front() : element;
}

std::string textOf(const Node& node)
{
  if (!node.isElement())
  {
    const bool isText = node.kind() == Kind::Text || node.kind() == Kind::CData;
    return isText && !isBlankText(node) ? std::string(node.value()) : std::string();
  }
  std::string text;
  for (const Node& child : node.children())
  {
    text += textOf(child);
  }
  return text;
}

bool isBlankText(const Node& node)
{
  return node.kind() == Kind::Text &&
         node.value().find_first_not_of(" \t\r\n") == std::string::npos;
}

Nodes childrenNamed(const Nodes& parents, const std::string& name)
{
  Nodes named;
  for (const Node* const parent : parents)
  {
    for (const Node& child : parent->children())
    {
      if (child.isElement(name))
      {
        named.push_back(&child);
      }
    }
  }
  return named;
}

EntriesByKey entriesIn(const Nodes& containers, const Element& element)
{
  const Element& format = entryFormat(element);
  const format::Attribute* const key = attributeFor(format, Role::Key);
  EntriesByKey entries;
  std::map<std::string, std::size_t> known; // texts that count once
  for (const Node* const node : nodesIn(containers, element))
  {
    std::vector<Entry>& ofKey = entries[attributeText(*node, key)];
    if (format.several == Several::LastOfKeyCounts && !ofKey.empty())
    {
      ofKey.front().others.push_back(ofKey.front().node);
      ofKey.front().node = node;
      continue;
    }
    if (format.several == Several::CountOnce)
    {
      // Of what is no element readers see no text, not even of a text.
      const std::string text = node->isElement() ? contentOf(*node, element) : std::string();
      const auto [first, isNew] = known.emplace(text, ofKey.size());
      if (!isNew)
      {
        ofKey[first->second].others.push_back(node);
        continue;
      }
    }
    ofKey.push_back({node, {}});
  }
  return entries;
}

ValuesByKey valuesIn(const AnyConstReference& field)
{
  if (field.type()->kind() == TypeKind::List)
  {
    return {{"", field.elements()}};
  }
  ValuesByKey values;
  for (const auto& [key, value] : field.entries())
  {
    values[key.as<std::string>()] = value.type()->kind() == TypeKind::List
                                        ? value.elements()
                                        : std::vector<AnyConstReference>{value};
  }
  return values;
}

} // namespace vesk::edit
