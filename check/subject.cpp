// SPDX-License-Identifier: Apache-2.0
#include <check/subject.hpp>
#include <package/xml/text.hpp>

namespace vesk::check
{
namespace
{
using source::Kind;
using source::Range;

bool isText(const source::Node& node)
{
  return node.kind() == Kind::Text || node.kind() == Kind::CData || node.kind() == Kind::Reference;
}

/// The name in a start tag or an instruction.
Range nameIn(const source::Node& node)
{
  const std::uint32_t begin =
      node.range().begin + static_cast<std::uint32_t>(node.isElement() ? 1 : 2);
  return {begin, begin + static_cast<std::uint32_t>(node.name().size())};
}

/// The texts that stand directly in an element, with what is between them.
Range textIn(const source::Node& element)
{
  std::optional<Range> text;
  for (const source::Node& child : element.children())
  {
    if (isText(child))
    {
      text = {text ? text->begin : child.range().begin, child.range().end};
    }
  }
  return text.value_or(element.range());
}
} // namespace

std::optional<Range> Subject::range() const
{
  const source::Node* const inText = node.inText();
  if (inText == nullptr)
  {
    return std::nullopt;
  }
  switch (part)
  {
  case Part::Whole:
    return inText->range();
  case Part::Name:
    return nameIn(*inText);
  case Part::Text:
    return inText->isElement() ? textIn(*inText) : inText->range();
  case Part::AttributeName:
  case Part::AttributeValue:
    break;
  }
  const source::Attribute* const found = inText->attribute(fromQString(attribute));
  if (found == nullptr)
  {
    return nameIn(*inText);
  }
  return part == Part::AttributeName       ? found->nameRange()
         : found->valueRange().size() == 0 ? found->range()
                                           : found->valueRange();
}

} // namespace vesk::check
