// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_PARSING_HPP
#define PACKAGE_XML_PARSING_HPP

#include <package/loaderror.hpp>

#include <QDomDocument>

#include <optional>

class QIODevice;

namespace vesk
{

/// Parsing of manifests. Where it fails, there is no document, and \p error is filled; else \p error
/// stays as it was.
/// \{

/// Parses all of an open device, in whatever encoding, without namespace processing. A device that
/// fails counts as one that ends there. The same tree, verdict, message and place as
/// QDomDocument::setContent gives, but for documents beyond the limits (see limits.hpp), which are
/// refused, and for invalid byte sequences that the toolkit's small chunks cut in two.
std::optional<QDomDocument> parseXml(QIODevice& device, LoadError& error);

/// The same with a text, and with namespace processing.
std::optional<QDomDocument> parseXml(const QString& text, LoadError& error);

/// As parseXml(), but a file that cannot be read to its end is an error, and a file's errors have its
/// path.
std::optional<QDomDocument> parseDevice(QIODevice& device, LoadError& error);

/// The same with the file at \p path.
std::optional<QDomDocument> parseFile(const std::string& path, LoadError& error);

/// \}

} // namespace vesk

#endif
