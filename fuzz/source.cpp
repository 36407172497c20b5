// SPDX-License-Identifier: Apache-2.0
// Parses a text strictly, edits it and lays it out: nodes cover the text, an edit changes what it is
// about and nothing else, and what is laid out is so for good.
#include "support.hpp"

#include <source/formatting.hpp>
#include <source/lines.hpp>

#include <stdexcept>

using namespace vesk::source;

namespace
{
/// All that a tree says but where it stands, with \p changed and what is in it left out.
void list(const Node& node, const Node* changed, std::vector<std::string>& nodes)
{
  if (&node == changed)
  {
    return;
  }
  nodes.push_back(std::to_string(static_cast<int>(node.kind())) + ' ' + std::string(node.name()) +
                  '|' + std::string(node.value()));
  for (const Attribute& attribute : node.attributes())
  {
    nodes.back() += '@' + std::string(attribute.name()) + '=' + std::string(attribute.value());
  }
  for (const Node& child : node.children())
  {
    list(child, changed, nodes);
  }
}

/// The elements in the order of the text.
void collect(const Node& node, const Document& document, std::vector<const Node*>& elements)
{
  require(node.range().begin <= node.range().end && node.range().end <= document.text().size(),
          "a node within the text");
  if (!node.isElement())
  {
    return;
  }
  elements.push_back(&node);
  std::uint32_t end = node.startTag().end;
  for (const Node& child : node.children())
  {
    require(child.range().begin == end && child.parent() == &node, "nodes without gaps");
    end = child.range().end;
    collect(child, document, elements);
  }
  require(document.error() || end == node.endTag().begin, "nodes up to the end tag");
}

/// Edits the element at an index, and compares all others.
void requireEdited(const Document& document, const std::vector<const Node*>& elements,
                   std::size_t index)
{
  const Node& element = *elements[index];
  Editor editor(document);
  editor.setAttribute(element, "fuzzed", "a<\"'&\t\xC3\xA9");
  editor.setText(element, "b<>&]]>\n\xE2\x98\x83");
  std::string bytes;
  try
  {
    bytes = editor.apply();
  }
  catch (const std::runtime_error&)
  {
    return; // of a text that is not encoded as we would
  }
  const Document edited = Document::parse(bytes);
  require(!edited.error(), "still well-formed");
  std::vector<const Node*> after;
  collect(*edited.root(), edited, after);
  require(after.size() == elements.size(), "as many elements");
  const Node& changed = *after[index];
  require(changed.attribute("fuzzed")->value() == "a<\"'&\t\xC3\xA9", "the attribute is set");
  std::string text;
  for (const Node& child : changed.children())
  {
    const bool isText = child.kind() == Kind::Text || child.kind() == Kind::CData;
    const bool isLayout = child.value().find_first_not_of(" \t\r\n") == std::string_view::npos;
    text += isText && !isLayout ? child.value() : "";
  }
  require(text == "b<>&]]>\n\xE2\x98\x83", "the text is set");
  std::vector<std::string> expected;
  std::vector<std::string> found;
  for (const Node& node : document.nodes())
  {
    list(node, &element, expected);
  }
  for (const Node& node : edited.nodes())
  {
    list(node, &changed, found);
  }
  require(found == expected, "all else is as it was");
}

/// The layout is done at once, and leaves all elements.
void requireLaidOut(const Document& document, std::size_t countOfElements)
{
  const std::vector<Edit> edits = formatting(document);
  try
  {
    const Document laidOut = Document::parse(vesk::source::apply(document, edits));
    require(!laidOut.error() && formatting(laidOut).empty(), "laid out once and for all");
    std::vector<const Node*> elements;
    collect(*laidOut.root(), laidOut, elements);
    require(elements.size() == countOfElements, "as many elements in the layout");
  }
  catch (const std::runtime_error&)
  {
    return; // of a text that is not encoded as we would
  }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const std::string bytes = textOf(data, size);
  const Document document = Document::parse(bytes);
  require(document.bytes() == bytes, "the bytes are kept");
  std::vector<const Node*> elements;
  for (const Node& node : document.nodes())
  {
    collect(node, document, elements);
  }
  if (const auto& error = document.error())
  {
    require(!error->message.empty() && error->range.begin <= error->range.end &&
                error->range.end <= document.text().size(),
            "an error within the text");
    require(Lines(document.text()).placeOf(error->range.begin).line > 0, "in a line of it");
    return 0;
  }
  require(!elements.empty(), "a root element");
  requireEdited(document, elements, size % elements.size());
  requireLaidOut(document, elements.size());
  return 0;
}
