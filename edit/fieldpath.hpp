// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_FIELDPATH_HPP
#define EDIT_FIELDPATH_HPP

#include <edit/export.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// Reaches, changes and compares the fields of a package, or of any value that the type system
/// describes, by paths that people write.
namespace vesk::edit
{

/// What is wrong with a path, or with the value for it: a sentence for people, which starts with
/// the path and names what could have been written instead.
class VESKPACKAGE_EDIT_EXPORT FieldError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

/// A step to every element of a list, or to every entry of a map.
struct EveryElement
{
  friend bool operator==(EveryElement, EveryElement) { return true; }
  friend bool operator!=(EveryElement, EveryElement) { return false; }
  friend bool operator<(EveryElement, EveryElement) { return false; }
};

/// The name of a struct's member, the key of a map's entry, the index of a list's element, from 0,
/// or every one of these elements or entries.
using FieldStep = std::variant<std::string, std::size_t, EveryElement>;

/// The way from a value to a part of it; to the value itself when there are no steps.
///
/// As text it is as in `version`, `names.en_US`, `behaviors[0].tags.en_US[1]` or `behaviors[*].path`.
/// A name that is empty or holds one of `.[]"=`, a blank or a control character is written as a JSON
/// string: `names."a.b"`. All text is UTF-8.
using FieldPath = std::vector<FieldStep>;

/// Parses the text of a path, which need not lead anywhere. Throws FieldError, with the place of
/// what is wrong, for all other text, also for an empty one.
VESKPACKAGE_EDIT_EXPORT FieldPath parseFieldPath(const std::string& text);

/// Parses FIELD=VALUE. The value is all behind the first "=" outside of quotes, and may be empty.
/// Throws FieldError as parseFieldPath() does, and where there is no "=".
VESKPACKAGE_EDIT_EXPORT std::pair<FieldPath, std::string> parseAssignment(const std::string& text);

/// The text of a path, of which parseFieldPath() makes the same path again; empty when there are no
/// steps. In names that have to be quoted, bytes that are no UTF-8 become U+FFFD.
VESKPACKAGE_EDIT_EXPORT std::string toText(const FieldPath& path);

} // namespace vesk::edit

#endif
