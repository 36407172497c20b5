// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_XMLNODE_HPP
#define PACKAGE_XML_XMLNODE_HPP

#include <package/xml/names.hpp>
#include <source/tree.hpp>

#include <QDomNode>

#include <string>

namespace vesk
{

/// A node as the readers of manifests see it, of the toolkit's tree or of that of `source/`. The
/// readers find the same in both where a text is read alike (readalike.hpp). The tree must outlive
/// it, and must not be changed meanwhile.
class XmlNode
{
public:
  XmlNode(const QDomNode& node) : inToolkit(node) {}
  /// Null, or a node of a tree without texts of blanks, which the toolkit's has not, either.
  explicit XmlNode(const source::Node* node) : inSource(node) {}

  bool isNull() const { return inSource == nullptr && inToolkit.isNull(); }

  /// Whether it is an element or an instruction of this name.
  bool isNamed(const XmlName& name) const;
  /// Of an element or an instruction; of other nodes nothing that XML can have as a name.
  std::string name() const;

  /// An attribute's value; empty when this is no element or has no such attribute.
  std::string attribute(const XmlName& name) const;
  /// All text and CDATA below an element; empty for other nodes.
  std::string text() const;

  XmlNode firstChild() const;
  XmlNode nextSibling() const;

  /// The node in the tree that it is of, for those who need more of it; null in the other one.
  /// \{
  const source::Node* nodeInSource() const { return inSource; }
  const QDomNode& nodeInToolkit() const { return inToolkit; }
  /// \}

private:
  const source::Node* inSource = nullptr;
  QDomNode inToolkit; // null when the node is in the other tree
};

} // namespace vesk

#endif
