// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_PARSING_HPP
#define PACKAGE_XML_PARSING_HPP

#include <package/loaderror.hpp>

#include <QDomDocument>

#include <optional>

class QIODevice;

namespace vesk
{

/// Parsing of manifests. On failure no document is returned and \p error is filled; on success
/// \p error is unchanged.
/// \{

/// Parses all of an open device, in whatever encoding, without namespace processing. A read error
/// is treated as the end of the device. Tree, verdict, message and place are the same as those of
/// QDomDocument::setContent, except for documents beyond the limits (see limits.hpp), which are
/// refused, and for invalid byte sequences that the toolkit's smaller chunks cut in two.
std::optional<QDomDocument> parseXml(QIODevice& device, LoadError& error);

/// The same with a text, and with namespace processing.
std::optional<QDomDocument> parseXml(const QString& text, LoadError& error);

/// As parseXml(), but a device that is not open, and a file that cannot be read to its end, are
/// errors. A file's errors have its path.
std::optional<QDomDocument> parseDevice(QIODevice& device, LoadError& error);

/// The same with the file at \p path.
std::optional<QDomDocument> parseFile(const std::string& path, LoadError& error);

/// \}

} // namespace vesk

#endif
