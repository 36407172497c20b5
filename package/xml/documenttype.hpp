// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_DOCUMENTTYPE_HPP
#define PACKAGE_XML_DOCUMENTTYPE_HPP

#include <package/loaderror.hpp>
#include <package/xml/openelements.hpp>

#include <QString>

#include <optional>

namespace vesk
{

/// Parses a document that has a document type once without building a tree, and tells whether it
/// goes beyond the limits. Only the parser knows what entities expand to, so the parser is watched.
/// A document that is malformed before it reaches a limit is not refused here: the parse that
/// builds the tree stops at the same place.
std::optional<LoadError> checkLimitsWithDocumentType(const QString& text, Namespaces namespaces);

} // namespace vesk

#endif
