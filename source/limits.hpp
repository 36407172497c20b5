// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_LIMITS_HPP
#define SOURCE_LIMITS_HPP

#include <string>

namespace vesk
{

/// How many of something a text may have.
struct Limit
{
  int most;
  const char* what;

  /// The error message for a text that has more.
  std::string refusal() const { return "more than " + std::to_string(most) + ' ' + what; }
};

/// What a manifest may cost. The toolkit's parser and its tree use the stack for every level of
/// nesting, and time or memory that grows faster than the text for entities, attributes and
/// namespaces. A document beyond these limits is refused as if it were not well-formed, also by the
/// parser of `source/`, which would need none for most of them; real manifests stay far below all.
namespace limits
{
/// Includes elements that come from entities. 756 levels overflow a stack of 256 KB.
constexpr Limit depth{256, "elements within each other"};
/// With namespaces, the toolkit searches all attributes of an element for each further one.
constexpr Limit attributes{1024, "attributes on an element"};
/// With namespaces, the toolkit compares all prefixes in scope with each other at every empty
/// element.
constexpr Limit prefixes{32, "namespace prefixes declared at once"};
/// The parser recurses for parentheses in content models. Open parentheses are counted anywhere in
/// the document type.
constexpr Limit parentheses{256, "parentheses within each other"};
/// The toolkit compares each declared entity with all others.
constexpr Limit entities{256, "declared entities"};
/// The toolkit copies an entity's value for each reference to another in it.
constexpr Limit referencesInEntities{1024, "references in entities"};
/// In the values of all entities together.
constexpr Limit declaredText{1 << 20, "characters in entities"};
/// By all references to entities together.
constexpr Limit broughtInText{1 << 20, "characters brought in by entities"};
} // namespace limits

} // namespace vesk

#endif
