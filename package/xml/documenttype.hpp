// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_DOCUMENTTYPE_HPP
#define PACKAGE_XML_DOCUMENTTYPE_HPP

#include <package/loaderror.hpp>

#include <QString>

#include <optional>

namespace vesk
{

/// Parses a document that has a document type once without building a tree, and tells whether it
/// goes beyond the limits. What entities bring is only known to the parser, so it is the parser
/// that is watched here. A document that is not well-formed before it reaches a limit is not
/// refused: the parse that builds the tree stops there, too.
std::optional<LoadError> checkLimitsWithDocumentType(const QString& text);

} // namespace vesk

#endif
