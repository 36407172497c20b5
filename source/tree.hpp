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
  Reference     ///< to an entity of the document type, by its name; it is not expanded
};

/// An attribute as it stands in a start tag.
class Attribute
{
public:
  std::string_view name() const { return {nameData, nameSize}; }
  /// With references resolved and each line end or tab turned into a blank, as XML demands.
  std::string_view value() const { return {valueData, valueSize}; }
  Range nameRange() const { return {begin, begin + nameSize}; }
  Range valueRange() const { return standing; } ///< between the quotes
  /// From the name to the closing quote.
  Range range() const { return {begin, standing.end + 1}; }

private:
  friend class TreeBuilder;

  const char* nameData = nullptr;
  const char* valueData = nullptr;
  std::uint32_t nameSize = 0;
  std::uint32_t valueSize = 0;
  std::uint32_t begin = 0;
  Range standing;
};

/// A node of the tree.
class Node
{
public:
  Kind kind() const { return itsKind; }
  bool isElement() const { return itsKind == Kind::Element; }
  bool isElement(std::string_view itsName) const { return isElement() && name() == itsName; }

  std::string_view name() const { return {nameData, nameSize}; }
  std::string_view value() const { return isElement() ? std::string_view() : valueView(); }

  /// The whole node, of an element from its start tag to its end tag.
  Range range() const { return whole; }
  /// Of an element; the same as range() when it is empty, as in `<a/>`.
  Range startTag() const { return {whole.begin, inner.begin}; }
  /// Of an element; of size 0 when it is empty, as in `<a/>`.
  Range endTag() const { return {inner.end, whole.end}; }

  /// Null for what stands outside of the root element.
  const Node* parent() const { return itsParent; }
  /// The next node with the same parent; null for the last.
  const Node* next() const { return itsNext; }
  const Node* firstChild() const { return itsFirstChild; }
  /// All children, in order.
  class ChildRange;
  ChildRange children() const;

  /// All attributes of an element, in the order in which they stand.
  struct AttributeRange
  {
    const Attribute* first;
    const Attribute* last;
    const Attribute* begin() const { return first; }
    const Attribute* end() const { return last; }
    bool empty() const { return first == last; }
  };
  AttributeRange attributes() const
  {
    return isElement() ? AttributeRange{firstAttribute, firstAttribute + count}
                       : AttributeRange{nullptr, nullptr};
  }
  /// The attribute of this name; null when there is none.
  const Attribute* attribute(std::string_view itsName) const
  {
    for (const Attribute& candidate : attributes())
    {
      if (candidate.name() == itsName)
      {
        return &candidate;
      }
    }
    return nullptr;
  }

private:
  friend class TreeBuilder;

  std::string_view valueView() const { return {valueData, count}; }

  // Packed, since a text has many nodes.
  Kind itsKind = Kind::Element;
  std::uint32_t nameSize = 0;
  std::uint32_t count = 0; // of attributes, or of the bytes of the value
  Range whole;
  Range inner; // of an element: between its tags
  const char* nameData = nullptr;
  union
  {
    const char* valueData = nullptr;
    const Attribute* firstAttribute; // of an element
  };
  const Node* itsParent = nullptr;
  const Node* itsFirstChild = nullptr;
  const Node* itsNext = nullptr;
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
      current = current->next();
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

inline Node::ChildRange Node::children() const { return ChildRange(itsFirstChild); }

} // namespace vesk::source

#endif
