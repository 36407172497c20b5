// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_READING_HPP
#define PACKAGE_XML_READING_HPP

#include <package/xml/xmlnode.hpp>

#include <list>
#include <map>
#include <string>
#include <utility>

class QDomElement;

namespace vesk
{

/// The child nodes of a node, of whatever kind, in document order, for a range-based loop. The tree
/// must not be changed meanwhile. \p Node is XmlNode or QDomNode.
template <typename Node>
class Children
{
public:
  template <typename Parent>
  explicit Children(const Parent& parent) : first(parent.firstChild())
  {}

  struct End
  {};

  class Iterator
  {
  public:
    explicit Iterator(const Node& start) : node(start) {}
    const Node& operator*() const { return node; }
    Iterator& operator++()
    {
      node = node.nextSibling();
      return *this;
    }
    bool operator!=(End) const { return !node.isNull(); }

  private:
    Node node;
  };

  Iterator begin() const { return Iterator(first); }
  static End end() { return {}; }

private:
  Node first;
};
template <typename Parent>
Children(const Parent&) -> Children<decltype(std::declval<const Parent&>().firstChild())>;

/// All text and CDATA below \p element; empty when it is null.
QString textIn(const QDomElement& element);

/// The same as UTF-8, as the records hold it.
std::string textOf(const QDomElement& element);

/// Sets the text of every child of \p group under the child's language, whatever the child's name.
/// A child that is no element gives an empty text under an empty language.
void readLocalizedTexts(const XmlNode& group, std::map<std::string, std::string>& texts);

/// Appends the text of every child of \p group to the list under the child's attribute
/// \p keyAttribute, as readLocalizedTexts does.
void readTextLists(const XmlNode& group, const XmlName& keyAttribute,
                   std::map<std::string, std::list<std::string>>& lists);

} // namespace vesk

#endif
