// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_NODE_HPP
#define CHECK_NODE_HPP

#include <check/twins.hpp>
#include <package/xml/reading.hpp>
#include <package/xml/xmlnode.hpp>

#include <QString>

#include <cstdint>
#include <vector>

namespace vesk::check
{

/// A node as the checker sees it, of the toolkit's tree or of that of `source/`: with texts in the
/// toolkit's form and in full, also where a reader's text ends at a NUL, and with where it stands.
class Node
{
public:
  /// Of the tree of `source/`, or null.
  explicit Node(const source::Node* inSource) : node(inSource) {}
  /// Of the toolkit's tree. \p twinsOfTree are null where the text is not known, and have to outlive
  /// it; \p number is that which they have for the node, or 0.
  Node(const QDomNode& inToolkit, const Twins* twinsOfTree, std::uint32_t numberOfNode)
      : node(inToolkit), twins(twinsOfTree), number(numberOfNode)
  {}

  bool isNull() const { return node.isNull(); }
  bool isElement() const;
  bool isText() const; ///< also in a CDATA section
  bool isCData() const;
  bool isComment() const;
  bool isDeclaration() const;
  bool isDocumentType() const { return node.nodeInToolkit().isDocumentType(); }
  bool isEntityReference() const;

  /// Of an element or an instruction.
  QString name() const;
  bool isNamed(const XmlName& name) const { return node.isNamed(name); }
  /// Of an element; \p otherwise where it has none of this name.
  QString attribute(const XmlName& name, const QString& otherwise = {}) const;
  /// Of an element, what its tag has, also where the toolkit hides it as the declaration of a namespace.
  /// \{
  bool hasAttribute(const XmlName& name) const;
  QString attributeInTag(const XmlName& name) const;
  int attributeCount() const;
  std::vector<QString> attributeNames() const;
  /// \}
  /// Of an element all text and CDATA in it; of another node what it holds.
  QString text() const;

  Node firstChild() const;
  Node nextSibling() const;

  /// The same node in the tree that knows the text; null where it has none.
  const source::Node* inText() const;
  /// The place that the toolkit gives, near the end of a node or of its start tag: the line, and the
  /// UTF-16 unit in it, both from 1; 0 where it does not know.
  /// \{
  int toolkitsLine() const;
  int toolkitsColumn() const;
  /// \}

private:
  XmlNode node;
  const Twins* twins = nullptr;
  std::uint32_t number = 0;
};

} // namespace vesk::check

#endif
