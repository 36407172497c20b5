// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_PARSING_HPP
#define PACKAGE_XML_PARSING_HPP

#include <package/loaderror.hpp>

#include <QDomDocument>

#include <optional>
#include <string_view>

class QIODevice;

namespace vesk
{

/// Parsing of manifests by the toolkit. On failure no document is returned and \p error is filled; on success
/// \p error is unchanged.
/// \{

/// Parses all of an open device, in whatever encoding, without namespace processing. A read error
/// is treated as the end of the device. Tree, verdict, message and place are the same as those of
/// QDomDocument::setContent, except for documents beyond the limits (see limits.hpp), which are
/// refused, and for invalid byte sequences that the toolkit's smaller chunks cut in two.
std::optional<QDomDocument> parseXml(QIODevice& device, LoadError& error);

/// The same with bytes that have been read already, and with what a device has behind them, if that
/// is not null.
std::optional<QDomDocument> parseXml(std::string_view begin, QIODevice* rest, LoadError& error);

/// The same with a text, and with namespace processing.
std::optional<QDomDocument> parseXml(const QString& text, LoadError& error);

/// \}

} // namespace vesk

#endif
