// SPDX-License-Identifier: Apache-2.0
#include <check/twins.hpp>
#include <package/xml/text.hpp>

#include <algorithm>
#include <array>

namespace vesk::check
{
namespace
{
using source::Kind;

/// Nodes that are counted together.
enum Class : std::size_t
{
  Elements,
  Texts,
  Comments,
  Others,
  ClassCount
};

Class classOf(const QDomNode& node)
{
  return node.isElement() ? Elements : node.isText() ? Texts : node.isComment() ? Comments : Others;
}

Class classOf(const source::Node& node)
{
  switch (node.kind())
  {
  case Kind::Element:
    return Elements;
  case Kind::Text:
  case Kind::CData:
    return Texts;
  case Kind::Comment:
    return Comments;
  default:
    return Others;
  }
}

/// Whether the toolkit has it among the children of an element or of the document.
bool isInToolkit(const source::Node& node)
{
  return node.kind() != Kind::DocumentType && node.kind() != Kind::Reference;
}

bool areAlike(const QDomNode& node, const source::Node& twin)
{
  return !node.isElement() || fromQString(node.nodeName()) == twin.name();
}

/// Nodes of one class that may be twins of the children of a node.
struct Candidates
{
  std::vector<const source::Node*> nodes;
  std::size_t before = 0; ///< how many stand before the first reference to an entity
  std::size_t behind = 0; ///< and behind the last

  /// Makes them as many as the children, with null for those that a reference has brought; none where
  /// that cannot be told. Texts that it brings can be one with those beside it: these \p canJoin.
  void align(std::size_t children, bool isWhole, bool hasReference, bool canJoin);
};

void Candidates::align(std::size_t children, bool isWhole, bool hasReference, bool canJoin)
{
  const std::size_t count = nodes.size();
  if (children > count && isWhole && hasReference && !canJoin)
  {
    nodes.insert(nodes.end() - static_cast<std::ptrdiff_t>(behind), children - count, nullptr);
    std::fill(nodes.begin() + static_cast<std::ptrdiff_t>(before),
              nodes.end() - static_cast<std::ptrdiff_t>(behind), nullptr);
  }
  else if (children != count && (isWhole || hasReference || children < count))
  {
    nodes.clear();
  }
}
} // namespace

Twins::Twins(const QDomDocument& document, const source::Document& parsed)
    : isWhole(!parsed.error())
{
  entries.emplace_back();
  addChildren(document, parsed.nodes());
  entries.emplace_back();
  for (const source::Node& node : parsed.nodes())
  {
    entries.back().twin = node.kind() == Kind::DocumentType ? &node : entries.back().twin;
  }
}

void Twins::addChildren(const QDomNode& parent, source::Node::ChildRange twins)
{
  std::array<Candidates, ClassCount> candidates;
  bool hasReference = false;
  for (const source::Node& twin : twins)
  {
    if (twin.kind() == Kind::Reference)
    {
      hasReference = true;
      for (Candidates& ofClass : candidates)
      {
        ofClass.behind = 0;
      }
    }
    if (isInToolkit(twin))
    {
      Candidates& ofClass = candidates.at(classOf(twin));
      ofClass.nodes.push_back(&twin);
      ++(hasReference ? ofClass.behind : ofClass.before);
    }
  }
  std::array<std::size_t, ClassCount> counts{};
  for (QDomNode child = parent.firstChild(); !child.isNull(); child = child.nextSibling())
  {
    ++counts.at(classOf(child));
  }
  for (std::size_t i = 0; i < ClassCount; ++i)
  {
    candidates.at(i).align(counts.at(i), isWhole, hasReference, i == Texts);
  }
  std::array<std::size_t, ClassCount> done{};
  for (QDomNode child = parent.firstChild(); !child.isNull(); child = child.nextSibling())
  {
    const Class kind = classOf(child);
    const std::size_t number = done.at(kind)++;
    std::vector<const source::Node*>& nodes = candidates.at(kind).nodes;
    const source::Node* twin = number < nodes.size() ? nodes[number] : nullptr;
    if (twin != nullptr && !areAlike(child, *twin))
    {
      nodes.clear(); // nor are those behind it
      twin = nullptr;
    }
    const std::size_t place = entries.size();
    entries.push_back({twin, 0});
    addChildren(child, twin != nullptr ? twin->children() : source::Node::ChildRange(nullptr));
    entries[place].next = static_cast<std::uint32_t>(entries.size());
  }
}

} // namespace vesk::check
