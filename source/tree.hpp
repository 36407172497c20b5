// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_TREE_HPP
#define SOURCE_TREE_HPP

#include <cstddef>
#include <cstdint>
#include <string_view>

/// \file
/// The nodes of a Document. They belong to it, never change, and are valid as long as it lives; so
/// are all views in them. Any number of threads may read them.
namespace vesk::source
{

/// A part of a document's text: from the byte at `begin` up to, without it, the byte at `end`, both
/// counted from 0 in Document::text().
struct Range
{
  std::uint32_t begin = 0;
  std::uint32_t end = 0;

  std::uint32_t size() const { return end - begin; }
};
inline bool operator==(const Range& left, const Range& right)
{
  return left.begin == right.begin && left.end == right.end;
}
inline bool operator!=(const Range& left, const Range& right) { return !(left == right); }

/// What a node is.
enum class Kind : std::uint8_t
{
  Declaration,  ///< `<?xml ...?>`; its value is what stands between
  DocumentType, ///< `<!DOCTYPE ...>`; its name is that of the root, its value the text between
  Element,      ///< its name, attributes and children
  Text,         ///< its value; references to characters are resolved, blanks are kept
  CData,        ///< `<![CDATA[...]]>`; its value is what stands between
  Comment,      ///< `<!--...-->`; its value is what stands between
  Instruction,  ///< `<?name value?>`
  Reference     ///< `&name;` to an entity of the document type; it is not expanded
};

/// An attribute as it stands in a start tag.
struct Attribute
{
  std::string_view name;
  /// With references resolved and each line end or tab turned into a blank, as XML demands.
  std::string_view value;
  Range nameRange;
  Range valueRange; ///< between the quotes

  /// From the name to the closing quote.
  Range range() const { return {nameRange.begin, valueRange.end + 1}; }
};

/// A node of the tree.
struct Node
{
  Kind kind = Kind::Element;
  std::uint32_t attributeCount = 0;
  Range range;    ///< the whole node, of an element from its start tag to its end tag
  Range startTag; ///< of an element; the same as `range` when it is empty, as in `<a/>`
  Range endTag;   ///< of an element; of size 0 when it is empty, as in `<a/>`
  std::string_view name;
  std::string_view value;
  const Node* parent = nullptr; ///< null for what stands outside of the root element
  const Node* firstChild = nullptr;
  const Node* next = nullptr; ///< the next node with the same parent
  const Attribute* firstAttribute = nullptr;

  bool isElement() const { return kind == Kind::Element; }
  bool isElement(std::string_view itsName) const { return isElement() && name == itsName; }

  /// The attribute of this name; null when the element has none.
  const Attribute* attribute(std::string_view itsName) const
  {
    for (const Attribute& candidate : attributes())
    {
      if (candidate.name == itsName)
      {
        return &candidate;
      }
    }
    return nullptr;
  }

  /// All attributes of an element, in the order in which they stand.
  struct AttributeRange
  {
    const Attribute* first;
    const Attribute* last;
    const Attribute* begin() const { return first; }
    const Attribute* end() const { return last; }
  };
  AttributeRange attributes() const { return {firstAttribute, firstAttribute + attributeCount}; }

  /// All children, in order.
  class ChildRange;
  ChildRange children() const;
};

/// The nodes from one on that have the same parent.
class Node::ChildRange
{
public:
  class Iterator
  {
  public:
    explicit Iterator(const Node* node) : current(node) {}
    const Node& operator*() const { return *current; }
    const Node* operator->() const { return current; }
    Iterator& operator++()
    {
      current = current->next;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return current != other.current; }

  private:
    const Node* current;
  };

  explicit ChildRange(const Node* node) : first(node) {}
  Iterator begin() const { return Iterator(first); }
  Iterator end() const { return Iterator(nullptr); }

private:
  const Node* first;
};

inline Node::ChildRange Node::children() const { return ChildRange(firstChild); }

} // namespace vesk::source

#endif
