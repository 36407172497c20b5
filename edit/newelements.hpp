// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_NEWELEMENTS_HPP
#define EDIT_NEWELEMENTS_HPP

#include <format/format.hpp>
#include <source/edits.hpp>
#include <vesk/anyreference.hpp>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Elements that hold what records hold. Unlike those that a package writes, they have empty texts,
/// too.
namespace vesk::edit
{

/// A text that no manifest can hold.
class UnwritableText : public std::runtime_error
{
public:
  UnwritableText(std::string unwritable, const std::string& why)
      : std::runtime_error(why), text(std::move(unwritable))
  {}

  std::string text;
};

// All throw UnwritableText.

/// The elements of a kind that a record needs: one or several, or none.
std::vector<source::NewElement> newElements(const format::Element& element,
                                            const AnyConstReference& record);

/// An entry of a list or map.
source::NewElement newEntry(const format::Element& holder, const std::string& key,
                            const AnyConstReference& value);

/// A value as the text of an attribute or element.
std::string asText(const AnyConstReference& value);

} // namespace vesk::edit

#endif
