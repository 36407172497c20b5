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

  /// A comment or the like that stays, though the entry that it stands for was to be removed or changed.
  struct StayingEntry
  {
    const source::Node* node;
    std::string field;
  };

  /// All of these.
  const std::vector<StayingEntry>& stayingEntries() const { return staying; }

private:
  /// Where an element is to come: beside a child of its parent, or in front of all if that is null.
  struct Place
  {
    const source::Node* parent;
    const source::Node* sibling;
    bool isBefore = false;
  };
  struct Insertion
  {
    Place place;
    source::NewElement element;
  };
  struct ByPlace
  {
    bool operator()(const source::Node* left, const source::Node* right) const
    {
      return left->range().begin < right->range().begin;
    }
  };
  using NodeSet = std::set<const source::Node*, ByPlace>;

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
  void changeEntriesOfKey(const std::string& key, const std::vector<Entry>& entries,
                          const format::Element& holder, const std::vector<AnyConstReference>& was,
                          const std::vector<AnyConstReference>& is, Place place);
  void changeEntry(const Entry& entry, const format::Element& holder, const std::string& key,
                   const AnyConstReference& before, const AnyConstReference& after);
  void changeText(const source::Node& node, const AnyConstReference& value);

  void removeEntry(const Entry& entry, const format::Element& holder);
  void removeEmptied(const Nodes& containers, const format::Element& element, bool isAll);
  /// Where a new entry comes that has none before it with the same key.
  Place placeOfFirst(const Nodes& hosts, const format::Element& parent,
                     const format::Element& element, const EntriesByKey& standing,
                     const std::string& key) const;
  bool isGone(const source::Node& node) const
  {
    return removed.count(&node) != 0 || unwrapped.count(&node) != 0;
  }
  void applyRemovals();
  void applyInsertions();

  [[noreturn]] void refuse(const std::string& why, const source::Node& node) const;
  void refuseReferences(const Nodes& nodes) const;

  const source::Document& document;
  source::Editor editor;
  NodeSet removed;
  NodeSet unwrapped; ///< of which only the tags are removed
  std::vector<Insertion> insertions;
  std::vector<StayingEntry> staying;
};

} // namespace vesk::edit

#endif
