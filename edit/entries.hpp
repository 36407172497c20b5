// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_ENTRIES_HPP
#define EDIT_ENTRIES_HPP

#include <format/format.hpp>
#include <source/document.hpp>
#include <vesk/anyreference.hpp>

#include <map>
#include <string>
#include <vector>

/// The entries of a list or map, as a record holds them and as they stand in a text. Those of a list
/// all have the key "".
namespace vesk::edit
{

using Nodes = std::vector<const source::Node*>;

/// An entry in a text.
struct Entry
{
  const source::Node* node = nullptr; ///< the one that counts
  Nodes others;                       ///< of the same key or text, which do not count
};
using EntriesByKey = std::map<std::string, std::vector<Entry>>;
using ValuesByKey = std::map<std::string, std::vector<AnyConstReference>>;

/// Whether the entries of a field stand in an element of their own, rather than among other elements.
bool isContainer(const format::Element& element);

/// What an entry is called and has, of a field that an element holds.
const format::Element& entryFormat(const format::Element& element);

/// The text that readers take from a node: without that of comments, and without blanks between
/// elements.
std::string textOf(const source::Node& node);

/// Whether a text is layout to readers, who drop it.
bool isBlankText(const source::Node& node);

/// The child elements of this name, in order.
Nodes childrenNamed(const Nodes& parents, const std::string& name);

/// The entries of the field that \p element holds: in the elements \p containers, or, where they have
/// no container, among the children of these.
EntriesByKey entriesIn(const Nodes& containers, const format::Element& element);

/// The parts of a list or map.
ValuesByKey valuesIn(const AnyConstReference& field);

} // namespace vesk::edit

#endif
