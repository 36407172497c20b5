// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_FIELDVALUE_HPP
#define EDIT_FIELDVALUE_HPP

#include <edit/export.hpp>
#include <edit/fieldpath.hpp>
#include <vesk/anyvalue.hpp>

#include <string>

namespace vesk::edit
{

/// Members are known by their registered and by their friendly names: `behaviors[0].langToTags` is
/// `behaviors[0].tags`. The name of a map's entry is its key: a text as it is, any other key as
/// JSON. A step leads through an AnyValue to what it holds.
/// \{

/// The part of a package, or of any value, to which the path leads: a view, as valid as \p root.
/// Throws FieldError, which says how far the path leads and what is there.
VESKPACKAGE_EDIT_EXPORT AnyConstReference valueAt(const AnyConstReference& root,
                                                  const FieldPath& path);

/// Sets the part to which the path leads: a string to the text as it is, and anything else to what
/// the text says in JSON (true, 12, ["en_US", "de"], {"en_US": "Hello"}). Members of structs that it
/// leaves out get their default. A map's entry is made when there is none under the key; the index
/// behind the last element of a list appends one. Throws FieldError, and has changed nothing then.
VESKPACKAGE_EDIT_EXPORT void setAt(const AnyReference& root, const FieldPath& path,
                                   const std::string& text);

/// \}

} // namespace vesk::edit

#endif
