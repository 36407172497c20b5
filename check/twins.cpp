// SPDX-License-Identifier: Apache-2.0
#include <check/twins.hpp>
#include <package/xml/text.hpp>

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
  std::array<std::vector<const source::Node*>, ClassCount> candidates;
  bool hasReference = false;
  for (const source::Node& twin : twins)
  {
    hasReference = hasReference || twin.kind() == Kind::Reference;
    if (isInToolkit(twin))
    {
      candidates.at(classOf(twin)).push_back(&twin);
    }
  }
  std::array<std::size_t, ClassCount> counts{};
  for (QDomNode child = parent.firstChild(); !child.isNull(); child = child.nextSibling())
  {
    ++counts.at(classOf(child));
  }
  for (std::size_t i = 0; i < ClassCount; ++i)
  {
    const bool isSure = counts.at(i) == candidates.at(i).size() ||
                        (!isWhole && !hasReference && counts.at(i) > candidates.at(i).size());
    if (!isSure)
    {
      candidates.at(i).clear();
    }
  }
  std::array<std::size_t, ClassCount> done{};
  for (QDomNode child = parent.firstChild(); !child.isNull(); child = child.nextSibling())
  {
    const Class kind = classOf(child);
    const std::size_t number = done.at(kind)++;
    const source::Node* twin =
        number < candidates.at(kind).size() ? candidates.at(kind)[number] : nullptr;
    if (twin != nullptr && !areAlike(child, *twin))
    {
      candidates.at(kind).clear(); // nor are those behind it
      twin = nullptr;
    }
    const std::size_t place = entries.size();
    entries.push_back({twin, 0});
    addChildren(child, twin != nullptr ? twin->children() : source::Node::ChildRange(nullptr));
    entries[place].next = static_cast<std::uint32_t>(entries.size());
  }
}

} // namespace vesk::check
