// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_ELEMENTS_HPP
#define TOOLS_VESKPACKAGE_LSP_ELEMENTS_HPP

#include <format/format.hpp>
#include <source/document.hpp>

#include <cstddef>
#include <string>
#include <string_view>

/// The elements of a parsed manifest, by the description of the format.
namespace tool::lsp
{

/// What the format has for an element; null where it has none, as in what is no manifest.
const vesk::format::Element* formatOf(const vesk::source::Node& element);

/// What the format has for an attribute of an element; null where it has none.
const vesk::format::Attribute* formatOf(const vesk::format::Element& element,
                                        const vesk::source::Attribute& attribute);

/// The innermost element around the byte at \p offset, or that ends there; null where there is none.
const vesk::source::Node* elementAt(const vesk::source::Document& document, std::size_t offset);

/// The text directly in an element, without blanks around it.
std::string textOf(const vesk::source::Node& element);

/// Calls \p visit with each element that the format has, and what it has for it: a parent first.
template <typename Visit>
void visitElements(const vesk::source::Node& element, const Visit& visit)
{
  if (const vesk::format::Element* const format = formatOf(element))
  {
    visit(element, *format);
    for (const vesk::source::Node& child : element.children())
    {
      if (child.isElement())
      {
        visitElements(child, visit);
      }
    }
  }
}

} // namespace tool::lsp

#endif
