// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_LIMITS_HPP
#define PACKAGE_XML_LIMITS_HPP

/// What a manifest may cost. The toolkit's parser and its tree use the stack for every level of
/// nesting, and time or memory that grows faster than the text for entities and attributes. A
/// document beyond these limits is refused as if it were not well-formed; real manifests stay far
/// below all of them.
namespace vesk::limits
{
/// Elements within each other, counting those that entities bring. 756 end a thread with 256 KB of
/// stack.
constexpr int depth = 256;
/// The toolkit keeps every attribute in a list that it searches for each further one.
constexpr int attributes = 1024;
/// Parentheses within each other in the content models of a document type.
constexpr int parentheses = 256;
/// Declared entities; the toolkit compares each with all others.
constexpr int entities = 256;
/// References in the values of entities; the toolkit copies a value for each.
constexpr int referencesInEntities = 1024;
/// Characters in the values of entities, and characters that references to them bring in.
constexpr int entityText = 1 << 20;
} // namespace vesk::limits

#endif
