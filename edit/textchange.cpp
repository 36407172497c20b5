// SPDX-License-Identifier: Apache-2.0
#include <edit/json.hpp>
#include <edit/newelements.hpp>
#include <edit/pairing.hpp>
#include <edit/textchange.hpp>

#include <algorithm>
#include <map>
#include <unordered_map>

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

/// The first of some entries that is an element, in the order given; null when there is none.
template <typename Entries>
const Node* firstElement(Entries begin, Entries end)
{
  const auto found =
      std::find_if(begin, end, [](const Entry& entry) { return entry.node->isElement(); });
  return found == end ? nullptr : found->node;
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
    for (NewElement& made : newElements(child, after))
    {
      const Node* const host = hosts.back();
      insertions.push_back({{host, lastUpTo(*host, parent, child)}, std::move(made)});
    }
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
    removeEmptied(sections, element, true);
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
  for (const auto& ofKey : was)
  {
    is[ofKey.first]; // so that the keys of both are in it
  }
  for (const auto& [key, values] : is)
  {
    if (was[key] == values)
    {
      continue;
    }
    const auto ofKey = standing.find(key);
    const std::vector<Entry> entries =
        ofKey == standing.end() ? std::vector<Entry>() : ofKey->second;
    if (was[key].size() != entries.size())
    {
      refuseReferences(hosts);
      refuse("readers find other entries here than stand in the text", *hosts.back());
    }
    changeEntriesOfKey(key, entries, element, was[key], values,
                       placeOfFirst(hosts, parent, element, standing, key));
  }
  const bool isEmptied =
      std::all_of(is.begin(), is.end(), [](const auto& ofKey) { return ofKey.second.empty(); });
  if (isContainer(element) && element.written != Written::Always)
  {
    removeEmptied(hosts, element, isEmptied);
  }
}

void TextChange::changeEntriesOfKey(const std::string& key, const std::vector<Entry>& entries,
                                    const Element& holder,
                                    const std::vector<AnyConstReference>& was,
                                    const std::vector<AnyConstReference>& is, Place place)
{
  const std::vector<Pair> pairs = pairsOf(was, is);
  std::map<std::string, const Node*> leaving; // records that may come elsewhere
  for (const Pair& pair : pairs)
  {
    if (!pair.after && was[*pair.before].type()->kind() == TypeKind::Struct)
    {
      leaving[toJson(was[*pair.before], -1)] = entries[*pair.before].node;
    }
  }
  for (const auto& [i, j] : pairs)
  {
    if (!i)
    {
      NewElement made = newEntry(holder, key, is[*j]);
      const auto moved = leaving.empty() ? leaving.end() : leaving.find(toJson(is[*j], -1));
      made.moved = moved == leaving.end() ? nullptr : moved->second;
      insertions.push_back({place, std::move(made)});
      continue;
    }
    const Entry& entry = entries[*i];
    if (!j)
    {
      removeEntry(entry, holder);
    }
    else
    {
      changeEntry(entry, holder, key, was[*i], is[*j]);
    }
    if (entry.node->isElement())
    {
      place = {entry.node->parent(), entry.node};
    }
  }
}

TextChange::Place TextChange::placeOfFirst(const Nodes& hosts, const Element& parent,
                                           const Element& element, const EntriesByKey& standing,
                                           const std::string& key) const
{
  const auto inFrontOf = [](const Node& node) { return Place{node.parent(), &node, true}; };
  const auto behind = [](const Node& node) { return Place{node.parent(), &node}; };
  auto ofKey = standing.lower_bound(key);
  if (ofKey != standing.end() && ofKey->first == key)
  {
    if (const Node* const first = firstElement(ofKey->second.begin(), ofKey->second.end()))
    {
      return inFrontOf(*first);
    }
  }
  for (auto smaller = ofKey; smaller != standing.begin();)
  {
    --smaller;
    if (const Node* const last = firstElement(smaller->second.rbegin(), smaller->second.rend()))
    {
      return behind(*last);
    }
  }
  for (; ofKey != standing.end(); ++ofKey)
  {
    if (const Node* const first = firstElement(ofKey->second.begin(), ofKey->second.end()))
    {
      return inFrontOf(*first);
    }
  }
  const Node* const host = hosts.back();
  return {host, isContainer(element) ? nullptr : lastUpTo(*host, parent, element)};
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
      staying.push_back({entry.node, holder.field.name});
    }
    insertions.push_back({{entry.node->parent(), entry.node}, newEntry(holder, key, after)});
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
    insertions.push_back({{entry.node->parent(), entry.node}, newEntry(holder, key, after)});
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

void TextChange::removeEntry(const Entry& entry, const Element& holder)
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
      staying.push_back({node, holder.field.name});
    }
  }
}

/// Removes elements that hold nothing any more; where comments are in them that would be read as
/// entries, only their tags, if no entry is left in any of them. Where something else is, nothing.
void TextChange::removeEmptied(const Nodes& containers, const Element& element, bool isAll)
{
  for (const Node* const container : containers)
  {
    bool isEmpty = std::none_of(insertions.begin(), insertions.end(),
                                [container](const Insertion& insertion)
                                { return insertion.place.parent == container; });
    bool isTouched = isAll;
    for (const Node& child : container->children())
    {
      isEmpty = isEmpty && (isBlankText(child) || isGone(child));
      isTouched = isTouched || isGone(child);
    }
    if (isEmpty && isTouched)
    {
      removed.insert(container);
    }
    else if (isAll && element.holds == Holds::Entries)
    {
      refuseReferences({container});
      unwrapped.insert(container);
      // Outside it stands for no entry.
      staying.erase(std::remove_if(staying.begin(), staying.end(),
                                   [container](const StayingEntry& entry)
                                   { return entry.node->parent() == container; }),
                    staying.end());
    }
  }
}

std::string TextChange::apply()
{
  applyRemovals();
  applyInsertions();
  return editor.apply();
}

void TextChange::applyRemovals()
{
  const Node* first = nullptr; // of neighbours that go together
  const Node* last = nullptr;
  for (const Node* const node : removed)
  {
    if (last != nullptr && node->range().begin < last->range().end)
    {
      continue; // it goes with the one around it
    }
    if (last != nullptr && node->parent() == last->parent() &&
        document.text({last->range().end, node->range().begin}).find_first_not_of(" \t") ==
            std::string_view::npos)
    {
      last = node;
      continue;
    }
    if (first != nullptr)
    {
      editor.remove(*first, *last);
    }
    first = node;
    last = node;
  }
  if (first != nullptr)
  {
    editor.remove(*first, *last);
  }
  for (const Node* const node : unwrapped)
  {
    editor.unwrap(*node);
  }
}

void TextChange::applyInsertions()
{
  // The element before each child that stays, of parents where one is asked for.
  std::map<const Node*, std::unordered_map<const Node*, const Node*>> staysBefore;
  const auto stayingBefore = [&](const Node* node)
  {
    auto& before = staysBefore[node->parent()];
    const Node* last = nullptr;
    for (const Node* child = before.empty() ? node->parent()->firstChild() : nullptr;
         child != nullptr; child = child->next())
    {
      before[child] = last;
      last = child->isElement() && !isGone(*child) ? child : last;
    }
    return before[node];
  };
  std::map<std::pair<const Node*, const Node*>, std::vector<NewElement>> byPlace;
  for (Insertion& insertion : insertions)
  {
    const auto& [parent, sibling, isBefore] = insertion.place;
    const Node* const after =
        sibling != nullptr && (isBefore || isGone(*sibling)) ? stayingBefore(sibling) : sibling;
    byPlace[{parent, after}].push_back(std::move(insertion.element));
  }
  for (const auto& [place, elements] : byPlace)
  {
    editor.insert(*place.first, place.second, elements);
  }
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
