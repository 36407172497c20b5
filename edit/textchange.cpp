// SPDX-License-Identifier: Apache-2.0
#include <edit/newelements.hpp>
#include <edit/pairing.hpp>
#include <edit/textchange.hpp>

#include <algorithm>

namespace vesk::edit
{

using format::Element;
using format::Holds;
using format::Role;
using format::Several;
using format::Written;
using source::Kind;
using source::NewElement;
using source::Node;

namespace
{
/// Whether two records differ in what an element that is no field holds, or elements within it.
bool differ(const Element& element, const AnyConstReference& before, const AnyConstReference& after)
{
  const auto isOther = [&](const format::Entry& entry)
  {
    return !entry.field.name.empty() &&
           before.member(entry.field.registered) != after.member(entry.field.registered);
  };
  return std::any_of(element.attributes.begin(), element.attributes.end(), isOther) ||
         std::any_of(element.children.begin(), element.children.end(),
                     [&](const Element& child) {
                       return child.field.name.empty() ? differ(child, before, after)
                                                       : isOther(child);
                     });
}

const Node* previousElement(const Node& node)
{
  const Node* previous = nullptr;
  for (const Node& sibling : node.parent()->children())
  {
    if (&sibling == &node)
    {
      break;
    }
    previous = sibling.isElement() ? &sibling : previous;
  }
  return previous;
}

/// A reference to an entity among the children of an element; null when there is none.
const Node* referenceIn(const Node& node)
{
  for (const Node& child : node.children())
  {
    if (child.kind() == Kind::Reference)
    {
      return &child;
    }
  }
  return nullptr;
}

/// The last child of a kind, or of the nearest kind before it in the format that there is.
const Node* lastUpTo(const Node& host, const Element& parent, const Element& child)
{
  for (std::size_t i = static_cast<std::size_t>(&child - parent.children.data()) + 1; i-- > 0;)
  {
    const Nodes earlier = childrenNamed({&host}, parent.children[i].name);
    if (!earlier.empty())
    {
      return earlier.back();
    }
  }
  return nullptr;
}

std::size_t countOf(const EntriesByKey& entries, const std::string& key)
{
  const auto ofKey = entries.find(key);
  return ofKey == entries.end() ? 0 : ofKey->second.size();
}
} // namespace

void TextChange::change(const Manifest& before, const Manifest& after)
{
  changeRecord({document.root()}, format::package(), AnyConstReference(before),
               AnyConstReference(after));
}

void TextChange::changeRecord(const Nodes& hosts, const Element& element,
                              const AnyConstReference& before, const AnyConstReference& after)
{
  changeAttributes(*hosts.back(), element, before, after);
  for (const Element& child : element.children)
  {
    changeChild(hosts, element, child, before, after);
  }
}

void TextChange::changeAttributes(const Node& host, const Element& element,
                                  const AnyConstReference& before, const AnyConstReference& after)
{
  const source::Attribute* previous = nullptr;
  for (const format::Attribute& attribute : element.attributes)
  {
    const source::Attribute* const standing = host.attribute(attribute.name);
    const AnyConstReference value = after.member(attribute.field.registered);
    if (value != before.member(attribute.field.registered))
    {
      const std::string text = asText(value);
      if (!text.empty() || attribute.written == Written::Always)
      {
        editor.setAttribute(host, attribute.name, text, previous);
      }
      else if (standing != nullptr)
      {
        editor.removeAttribute(*standing);
      }
    }
    previous = standing != nullptr ? standing : previous;
  }
}

void TextChange::changeChild(const Nodes& hosts, const Element& parent, const Element& child,
                             const AnyConstReference& before, const AnyConstReference& after)
{
  const bool isSection = child.field.name.empty();
  const AnyConstReference was = isSection ? before : before.member(child.field.registered);
  const AnyConstReference is = isSection ? after : after.member(child.field.registered);
  if (isSection ? !differ(child, was, is) : was == is)
  {
    return;
  }
  const Nodes holders = childrenNamed(hosts, child.name);
  if (holders.empty())
  {
    refuseReferences(hosts);
    insertInOrder(hosts, parent, child, newElements(child, after));
  }
  else if (isSection)
  {
    changeSection(holders, child, before, after);
  }
  else if (is.type()->kind() == TypeKind::List || is.type()->kind() == TypeKind::Map)
  {
    changeEntries(isContainer(child) ? holders : hosts, parent, child, was, is);
  }
  else
  {
    changeField(holders, child, was, is);
  }
}

void TextChange::changeSection(const Nodes& sections, const Element& element,
                               const AnyConstReference& before, const AnyConstReference& after)
{
  changeRecord(sections, element, before, after);
  if (newElements(element, after).empty())
  {
    removeEmptied(sections, element);
  }
}

/// Changes what is held by one element.
void TextChange::changeField(const Nodes& holders, const Element& element,
                             const AnyConstReference& before, const AnyConstReference& after)
{
  const bool isPresent = after.is<bool>()       ? after.as<bool>()
                         : after.is<AnyValue>() ? after.as<AnyValue>().isValid()
                                                : element.written == Written::Always ||
                                                      !after.as<std::string>().empty();
  if (!isPresent)
  {
    removed.insert(holders.begin(), holders.end());
  }
  else if (after.is<std::string>())
  {
    changeText(*holders.back(), after);
  }
  else if (after.is<AnyValue>())
  {
    changeRecord(holders, element, before.as<AnyValue>(), after.as<AnyValue>());
  }
}

void TextChange::changeEntries(const Nodes& hosts, const Element& parent, const Element& element,
                               const AnyConstReference& before, const AnyConstReference& after)
{
  const EntriesByKey standing = entriesIn(hosts, element);
  ValuesByKey was = valuesIn(before);
  ValuesByKey is = valuesIn(after);
  for (const auto& [key, values] : was)
  {
    is[key]; // so that the keys of both are in it
    if (values.size() != countOf(standing, key))
    {
      refuseReferences(hosts);
      refuse("readers find other entries here than stand in the text", *hosts.back());
    }
  }
  // A new entry comes behind the one before it, in the order of keys, or in front of the first one.
  const Node* previous = nullptr;
  const Node* first = standing.empty() ? nullptr : standing.begin()->second.front().node;
  for (const auto& [key, values] : is)
  {
    if (countOf(standing, key) != 0)
    {
      previous = nullptr;
      first = standing.at(key).front().node;
    }
    for (const Pair& pair : pairsOf(was[key], values))
    {
      const Entry* const entry = pair.before ? &standing.at(key)[*pair.before] : nullptr;
      if (entry != nullptr && pair.after)
      {
        changeEntry(*entry, element, key, was[key][*pair.before], values[*pair.after]);
      }
      else if (entry != nullptr)
      {
        removeEntry(*entry);
      }
      else if (previous != nullptr)
      {
        insert(*previous->parent(), previous, newEntry(element, key, values[*pair.after]));
      }
      else if (first != nullptr)
      {
        insert(*first->parent(), previousElement(*first),
               newEntry(element, key, values[*pair.after]));
      }
      else if (isContainer(element))
      {
        insert(*hosts.back(), nullptr, newEntry(element, key, values[*pair.after]));
      }
      else
      {
        insertInOrder(hosts, parent, element, {newEntry(element, key, values[*pair.after])});
      }
      previous = entry != nullptr && !isGone(*entry->node) ? entry->node : previous;
    }
  }
  const bool isEmptied =
      std::all_of(is.begin(), is.end(), [](const auto& ofKey) { return ofKey.second.empty(); });
  if (isContainer(element) && isEmptied && element.written != Written::Always)
  {
    removeEmptied(hosts, element);
  }
}

void TextChange::changeEntry(const Entry& entry, const Element& holder, const std::string& key,
                             const AnyConstReference& before, const AnyConstReference& after)
{
  if (before == after)
  {
    return;
  }
  const Element& element = entryFormat(holder);
  const format::Attribute* const value = attributeFor(element, Role::Value);
  if (!entry.node->isElement())
  {
    if (element.several != Several::LastOfKeyCounts)
    {
      staying.push_back(entry.node);
    }
    insert(*entry.node->parent(), entry.node, newEntry(holder, key, after));
    return;
  }
  if (element.several == Several::CountOnce)
  {
    removed.insert(entry.others.begin(), entry.others.end());
  }
  if (after.type()->kind() == TypeKind::Struct)
  {
    changeRecord({entry.node}, element, before, after);
  }
  else if (holder.holds == Holds::Names)
  {
    removed.insert(entry.node);
    insert(*entry.node->parent(), entry.node, newEntry(holder, key, after));
  }
  else if (value != nullptr)
  {
    editor.setAttribute(*entry.node, value->name, asText(after));
  }
  else
  {
    changeText(*entry.node, after);
  }
}

void TextChange::changeText(const Node& node, const AnyConstReference& value)
{
  refuseReferences({&node});
  for (const Node& child : node.children())
  {
    if (child.isElement() && !textOf(child).empty())
    {
      refuse("a part of this text is in an element \"" + std::string(child.name()) + '"', child);
    }
  }
  editor.setText(node, asText(value));
}

void TextChange::removeEntry(const Entry& entry)
{
  Nodes all = entry.others;
  all.push_back(entry.node);
  for (const Node* const node : all)
  {
    if (node->isElement())
    {
      removed.insert(node);
    }
    else
    {
      staying.push_back(node);
    }
  }
}

/// Removes elements that hold nothing any more; where comments are in them that would be read as
/// entries, only their tags, and where something else is, nothing.
void TextChange::removeEmptied(const Nodes& containers, const Element& element)
{
  for (const Node* const container : containers)
  {
    const auto children = container->children();
    bool isEmpty = true;
    for (const Node& child : children)
    {
      isEmpty = isEmpty && (isBlankText(child) || isGone(child));
    }
    if (isEmpty)
    {
      removed.insert(container);
    }
    else if (element.holds == Holds::Entries)
    {
      refuseReferences({container});
      unwrapped.insert(container);
      // Outside it stands for no entry.
      staying.erase(std::remove_if(staying.begin(), staying.end(),
                                   [container](const Node* node)
                                   { return node->parent() == container; }),
                    staying.end());
    }
  }
}

void TextChange::insert(const Node& parent, const Node* after, NewElement element)
{
  insertions.push_back({&parent, after, std::move(element)});
}

void TextChange::insertInOrder(const Nodes& hosts, const Element& parent, const Element& child,
                               std::vector<NewElement> elements)
{
  const Node& host = *hosts.back();
  const Node* const after = lastUpTo(host, parent, child);
  for (NewElement& element : elements)
  {
    insert(host, after, std::move(element));
  }
}

/// A place to insert at is found before all is known that will be removed.
const Node* TextChange::stayingBefore(const Node* node) const
{
  while (node != nullptr && isGone(*node))
  {
    node = previousElement(*node);
  }
  return node;
}

std::string TextChange::apply()
{
  const auto isWithinRemoved = [this](const Node& node)
  {
    const Node* outer = node.parent();
    while (outer != nullptr && removed.count(outer) == 0)
    {
      outer = outer->parent();
    }
    return outer != nullptr;
  };
  for (const Node* const node : removed)
  {
    if (!isWithinRemoved(*node))
    {
      editor.remove(*node);
    }
  }
  for (const Node* const node : unwrapped)
  {
    editor.unwrap(*node);
  }
  std::map<std::pair<const Node*, const Node*>, std::vector<NewElement>> byPlace;
  for (Insertion& insertion : insertions)
  {
    byPlace[{insertion.parent, stayingBefore(insertion.after)}].push_back(
        std::move(insertion.element));
  }
  for (const auto& [place, elements] : byPlace)
  {
    editor.insert(*place.first, place.second, elements);
  }
  return editor.apply();
}

void TextChange::refuse(const std::string& why, const Node& node) const
{
  throw Refusal(why, source::Lines(document.text()).placeOf(node.range().begin));
}

void TextChange::refuseReferences(const Nodes& nodes) const
{
  for (const Node* const node : nodes)
  {
    if (const Node* const reference = referenceIn(*node))
    {
      refuse("this comes out of the entity \"" + std::string(reference->name()) +
                 "\", within which nothing is changed",
             *reference);
    }
  }
}

} // namespace vesk::edit
