// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FIELDPATH_HPP
#define TOOLS_VESKPACKAGE_FIELDPATH_HPP

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tool
{

/// What is wrong with a path, or with the value for it; the message starts with the path.
class FieldError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

/// The name of a struct's member, the key of a map's entry, or the index of a list's element.
using FieldStep = std::variant<std::string, std::size_t>;

/// The way from a value to a part of it; to the value itself when there are no steps.
///
/// As text it is as in `version`, `names.en_US` or `behaviors[0].tags.en_US[1]`. A name that is empty
/// or holds one of `.[]"=`, a blank or a control character is written as a JSON string:
/// `names."a.b"`.
using FieldPath = std::vector<FieldStep>;

/// Throws FieldError with the place of what is wrong.
FieldPath parseFieldPath(const std::string& text);
/// Parses FIELD=VALUE. The value is all behind the first "=" outside of quotes.
std::pair<FieldPath, std::string> parseAssignment(const std::string& text);

std::string toText(const FieldPath& path);

/// Where the first steps of a path lead, for messages.
std::string placeAt(const FieldPath& path, std::size_t depth);

/// Throws FieldError for what is at a path.
[[noreturn]] void failAt(const FieldPath& path, const std::string& why);

} // namespace tool

#endif
