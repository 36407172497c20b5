// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_NEWELEMENTS_HPP
#define EDIT_NEWELEMENTS_HPP

#include <format/format.hpp>
#include <source/edits.hpp>
#include <vesk/anyreference.hpp>

#include <string>
#include <vector>

/// Elements that hold what records hold. Unlike those that a package writes, they have empty texts,
/// too.
namespace vesk::edit
{

/// The elements of a kind that a record needs: one or several, or none.
std::vector<source::NewElement> newElements(const format::Element& element,
                                            const AnyConstReference& record);

/// An entry of a list or map. Throws Refusal for a name that the format does not know.
source::NewElement newEntry(const format::Element& holder, const std::string& key,
                            const AnyConstReference& value);

/// A value as the text of an attribute or element.
std::string asText(const AnyConstReference& value);

} // namespace vesk::edit

#endif
