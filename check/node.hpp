// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_NODE_HPP
#define CHECK_NODE_HPP

#include <package/xml/reading.hpp>
#include <package/xml/xmlnode.hpp>
#include <source/document.hpp>

#include <QString>

#include <cstddef>
#include <string_view>
#include <vector>

namespace vesk::check
{

/// Where something stands in a text: lines from 1, and UTF-16 units in a line from 1; 0 where that is
/// not known.
struct Place
{
  int line = 0;
  int column = 0;
};

/// Finds places in the text of a manifest that was parsed by `source/`, where lines end with "\n".
/// Looks through the text once, when it is first asked.
class Places
{
public:
  explicit Places(const source::Document& parsed) : text(parsed.text()) {}

  /// Where the toolkit says that a node is: near its end, or that of its start tag.
  Place of(const source::Node& node);

private:
  void look();
  /// How many UTF-16 units there are in front of a byte.
  std::size_t unitsBefore(std::size_t offset) const;

  std::string_view text;
  std::vector<std::size_t> lines; ///< where they begin; none before look()
  std::vector<std::size_t> units; ///< in front of each block of bytes
};

/// A node as the checker sees it, of the toolkit's tree or of that of `source/`: with texts in the
/// toolkit's form and in full, also where a reader's text ends at a NUL, and with its place.
class Node
{
public:
  /// \p places are those of a node of the tree of `source/`, and have to outlive it; null for a node
  /// of the toolkit's.
  Node(const XmlNode& read, Places* placesOfTree) : node(read), places(placesOfTree) {}

  bool isNull() const { return node.isNull(); }
  bool isElement() const;
  bool isText() const; ///< also in a CDATA section
  bool isComment() const;
  bool isDeclaration() const;
  bool isDocumentType() const { return node.nodeInToolkit().isDocumentType(); }
  bool isEntityReference() const { return node.nodeInToolkit().isEntityReference(); }

  /// Of an element or an instruction.
  QString name() const;
  bool isNamed(const XmlName& name) const { return node.isNamed(name); }
  /// Of an element; \p otherwise where it has none of this name.
  QString attribute(const XmlName& name, const QString& otherwise = {}) const;
  std::vector<QString> attributeNames() const;
  /// Of an element all text and CDATA in it; of another node what it holds.
  QString text() const;

  Node firstChild() const { return {node.firstChild(), places}; }
  Node nextSibling() const { return {node.nextSibling(), places}; }

  Place place() const;

private:
  XmlNode node;
  Places* places;
};

} // namespace vesk::check

#endif
