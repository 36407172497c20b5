// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_FIELDVALUE_HPP
#define EDIT_FIELDVALUE_HPP

#include <edit/export.hpp>
#include <edit/fieldpath.hpp>
#include <vesk/anyvalue.hpp>

#include <functional>
#include <string>
#include <vector>

namespace vesk::edit
{

/// Members are known by their registered and by their friendly names: `behaviors[0].langToTags` is
/// `behaviors[0].tags`. The name of a map's entry is its key: a text as it is, any other key as
/// JSON. A step leads through an AnyValue to what it holds.
/// \{

/// The part of a package, or of any value, to which the path leads: a view, as valid as \p root.
/// Throws FieldError, which says how far the path leads and what is there; also for a path with a step
/// to every element, for which there is visitAt().
VESKPACKAGE_EDIT_EXPORT AnyConstReference valueAt(const AnyConstReference& root,
                                                  const FieldPath& path);

/// Takes a path to one part and that part.
using FieldVisitor = std::function<void(const FieldPath& path, const AnyConstReference& value)>;

/// Calls \p visit for every part to which a path leads that may have steps to every element, in the
/// order of the elements and entries; where it leads nowhere, calls \p miss with the error instead,
/// and goes on with the next element. Takes time in proportion to the elements.
VESKPACKAGE_EDIT_EXPORT void visitAt(const AnyConstReference& root, const FieldPath& path,
                                     const FieldVisitor& visit,
                                     const std::function<void(const FieldError&)>& miss);

/// The paths without steps to every element that \p path stands for, in the order of the elements and
/// entries: none where a list is empty, and \p path itself where it has no such step. The steps in
/// front of the last such one have to lead somewhere, or FieldError is thrown as by valueAt(). Those
/// behind it are not followed: setAt() may well make what they lead to.
VESKPACKAGE_EDIT_EXPORT std::vector<FieldPath> expanded(const AnyConstReference& root,
                                                        const FieldPath& path);

/// Sets the part to which the path leads: a string to the text as it is, and anything else to what
/// the text says in JSON (true, 12, ["en_US", "de"], {"en_US": "Hello"}). Members of structs that it
/// leaves out get their default. A map's entry is made when there is none under the key; the index
/// behind the last element of a list appends one. Throws FieldError, and has changed nothing then; also
/// for a path with a step to every element.
VESKPACKAGE_EDIT_EXPORT void setAt(const AnyReference& root, const FieldPath& path,
                                   const std::string& text);

/// Gives a struct's member the default of its type, such as an empty text, and removes an element of
/// a list or an entry of a map, or all of them where the last step is to every element; that takes
/// time in proportion to the elements. False when there is no such element or entry, or none that the
/// steps in front of the last lead through; a list or map that is empty already is none of these.
/// Throws FieldError, and has changed nothing then, where the path can lead to nothing, and for a path
/// with another step to every element.
VESKPACKAGE_EDIT_EXPORT bool unsetAt(const AnyReference& root, const FieldPath& path);

/// \}

} // namespace vesk::edit

#endif
