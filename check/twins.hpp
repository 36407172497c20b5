// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_TWINS_HPP
#define CHECK_TWINS_HPP

#include <source/document.hpp>

#include <QDomDocument>

#include <cstdint>
#include <vector>

namespace vesk::check
{

/// Where the nodes of the toolkit's tree stand in the text, which it does not know itself: each has a
/// twin in the tree of `source/`. None have those that entities bring, and those behind the place
/// where the text is no strict XML any more.
class Twins
{
public:
  Twins(const QDomDocument& document, const source::Document& parsed);

  /// The twin of a node, and the number of its next sibling. Nodes are numbered in document order,
  /// from that of the document, 0.
  struct Entry
  {
    const source::Node* twin = nullptr;
    std::uint32_t next = 0;
  };
  const Entry& operator[](std::uint32_t number) const { return entries[number]; }
  /// The number of the document type, which is no child of the document.
  std::uint32_t documentType() const { return static_cast<std::uint32_t>(entries.size() - 1); }

private:
  void addChildren(const QDomNode& parent, source::Node::ChildRange twins);

  std::vector<Entry> entries;
  bool isWhole; ///< whether all of the text has been parsed
};

} // namespace vesk::check

#endif
