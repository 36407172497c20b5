// SPDX-License-Identifier: Apache-2.0
#include "lsp/elements.hpp"

#include "lsp/cursor.hpp"

#include <algorithm>

namespace tool::lsp
{

namespace format = vesk::format;
namespace source = vesk::source;

const format::Element* formatOf(const source::Node& element)
{
  return element.parent() != nullptr ? childOf(formatOf(*element.parent()), element.name())
         : element.isElement(format::package().name) ? &format::package()
                                                     : nullptr;
}

const format::Attribute* formatOf(const format::Element& element,
                                  const source::Attribute& attribute)
{
  const auto known = std::find_if(element.attributes.begin(), element.attributes.end(),
                                  [&attribute](const format::Attribute& other)
                                  { return other.name == attribute.name(); });
  return known == element.attributes.end() ? nullptr : &*known;
}

const source::Node* elementAt(const source::Document& document, std::size_t offset)
{
  const auto isAround = [offset](const source::Node& node)
  { return node.isElement() && node.range().begin <= offset && offset <= node.range().end; };
  const source::Node* found = nullptr;
  const source::Node* inner = document.root();
  while (inner != nullptr && isAround(*inner))
  {
    found = inner;
    inner = nullptr;
    for (const source::Node& child : found->children())
    {
      // Between two elements that touch, the later one.
      inner = isAround(child) ? &child : inner;
    }
  }
  return found;
}

std::string textOf(const source::Node& element)
{
  std::string text;
  for (const source::Node& child : element.children())
  {
    if (child.kind() == source::Kind::Text || child.kind() == source::Kind::CData)
    {
      text += child.value();
    }
  }
  const auto [begin, end] = trimmed(text, 0, text.size());
  return text.substr(begin, end - begin);
}

} // namespace tool::lsp
