// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_FIELDLIST_HPP
#define EDIT_FIELDLIST_HPP

#include <edit/export.hpp>

#include <string>
#include <vector>

namespace vesk::edit
{

/// A field of a Manifest, in words for people.
struct ListedField
{
  /// As in "behaviors[*].names.LANGUAGE", where the word in capitals stands for a key.
  std::string path;
  std::string type;    ///< as in "map from language to text"
  std::string place;   ///< the element or attribute; empty when a manifest does not hold the field
  std::string meaning; ///< in a sentence or two; empty where the place is
  std::string absent;  ///< what it means that there is none; empty where the place is
};

/// Every field of a Manifest, the members of records behind the list that they are in.
VESKPACKAGE_EDIT_EXPORT std::vector<ListedField> listedFields();

} // namespace vesk::edit

#endif
