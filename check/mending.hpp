// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_MENDING_HPP
#define CHECK_MENDING_HPP

#include <check/manifestcheck.hpp>
#include <check/node.hpp>
#include <source/edits.hpp>

#include <optional>

namespace vesk::check
{

/// Makes the mends of faults. Each is none where a node does not stand in the text, or not so plainly
/// that the edit could be seen through.
class Mending
{
public:
  /// \p edited is the text that the nodes stand in; null when it cannot be edited.
  explicit Mending(const source::Document* edited) : document(edited) {}

  /// Gives an element another name.
  std::optional<Mend> rename(const Node& element, const QString& name) const;
  std::optional<Mend> renameAttribute(const Node& element, const QString& from,
                                      const QString& to) const;
  /// Gives an attribute that is there another value.
  std::optional<Mend> setValue(const Node& element, const QString& attribute,
                               const QString& value) const;
  /// Gives an element that holds nothing but a text another one.
  std::optional<Mend> setText(const Node& element, const QString& text) const;
  /// Takes an element that holds nothing but text, if anything, out of the text.
  std::optional<Mend> remove(const Node& element) const;
  /// Puts what a section holds behind what an earlier one of the same parent holds.
  std::optional<Mend> merge(const Node& earlier, const Node& section) const;

private:
  const source::Document* document;
};

} // namespace vesk::check

#endif
