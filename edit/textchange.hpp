// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_TEXTCHANGE_HPP
#define EDIT_TEXTCHANGE_HPP

#include <edit/changes.hpp>
#include <edit/entries.hpp>
#include <source/edits.hpp>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vesk::edit
{

/// Carries the differences between two manifests over to the text of the first, along the
/// description of the format.
class TextChange
{
public:
  /// The readers of manifests take the ends of lines as they stand.
  explicit TextChange(const source::Document& changed)
      : document(changed), editor(changed, source::LineReading::Raw)
  {}

  /// Throws Refusal.
  void change(const Manifest& before, const Manifest& after);

  /// The bytes of the changed text.
  std::string apply();

  /// Comments and the like that stay, though the entries that they stand for were to be removed or
  /// changed.
  const Nodes& stayingEntries() const { return staying; }

private:
  /// An element that comes behind a child of a parent, or in front of all if that is null.
  struct Insertion
  {
    const source::Node* parent;
    const source::Node* after;
    source::NewElement element;
  };

  // All take the elements of the text that stand for an element of the format, which are several
  // where a section is repeated; of those that hold texts the last one counts.
  void changeRecord(const Nodes& hosts, const format::Element& element,
                    const AnyConstReference& before, const AnyConstReference& after);
  void changeAttributes(const source::Node& host, const format::Element& element,
                        const AnyConstReference& before, const AnyConstReference& after);
  void changeChild(const Nodes& hosts, const format::Element& parent, const format::Element& child,
                   const AnyConstReference& before, const AnyConstReference& after);
  void changeSection(const Nodes& sections, const format::Element& element,
                     const AnyConstReference& before, const AnyConstReference& after);
  void changeField(const Nodes& holders, const format::Element& element,
                   const AnyConstReference& before, const AnyConstReference& after);
  void changeEntries(const Nodes& hosts, const format::Element& parent,
                     const format::Element& element, const AnyConstReference& before,
                     const AnyConstReference& after);
  void changeEntry(const Entry& entry, const format::Element& holder, const std::string& key,
                   const AnyConstReference& before, const AnyConstReference& after);
  void changeText(const source::Node& node, const AnyConstReference& value);

  void removeEntry(const Entry& entry);
  void removeEmptied(const Nodes& containers, const format::Element& element);
  void insert(const source::Node& parent, const source::Node* after, source::NewElement element);
  /// Puts an element among the children of the last host, behind those that come before it in the
  /// format.
  void insertInOrder(const Nodes& hosts, const format::Element& parent,
                     const format::Element& child, std::vector<source::NewElement> elements);
  bool isGone(const source::Node& node) const
  {
    return removed.count(&node) != 0 || unwrapped.count(&node) != 0;
  }
  const source::Node* stayingBefore(const source::Node* node) const;

  [[noreturn]] void refuse(const std::string& why, const source::Node& node) const;
  void refuseReferences(const Nodes& nodes) const;

  const source::Document& document;
  source::Editor editor;
  std::set<const source::Node*> removed;
  std::set<const source::Node*> unwrapped; ///< of which only the tags are removed
  std::vector<Insertion> insertions;
  Nodes staying;
};

} // namespace vesk::edit

#endif
