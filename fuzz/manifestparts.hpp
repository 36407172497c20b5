// SPDX-License-Identifier: Apache-2.0
#ifndef FUZZ_MANIFESTPARTS_HPP
#define FUZZ_MANIFESTPARTS_HPP

#include <edit/manifest.hpp>

#include <set>
#include <string>
#include <vector>

/// The paths to all parts of a manifest's fields, whole lists and maps among them.
std::vector<vesk::edit::FieldPath> partsOf(const vesk::edit::Manifest& manifest);

/// A part of a manifest.
vesk::AnyReference partAt(vesk::edit::Manifest& manifest, const vesk::edit::FieldPath& path);

/// What is no field and so has to stay in a text: its declaration and document type, comments,
/// instructions and elements with a prefix, but those within the text of one language.
std::multiset<std::string> asidesIn(const std::string& bytes);

#endif
