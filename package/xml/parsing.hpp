// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_PARSING_HPP
#define PACKAGE_XML_PARSING_HPP

#include <QString>

class QDomDocument;
class QIODevice;

namespace vesk
{

/// Why and where a text is not well-formed, or goes beyond the limits.
struct SyntaxError
{
  QString message;
  int line = 0;   ///< from 1
  int column = 0; ///< from 1, in UTF-16 code units
  bool isBeyondLimits = false;
};

/// Parses all of an open device into \p document, in whatever encoding, without namespace
/// processing. The same tree, verdict, message and place as QDomDocument::setContent gives, but for
/// documents beyond the limits (see limits.hpp), which are refused, and for invalid byte sequences
/// that the toolkit's small chunks cut in two.
bool parseXml(QIODevice& device, QDomDocument& document, SyntaxError& error);

/// The same with a text, and with namespace processing.
bool parseXml(const QString& text, QDomDocument& document, SyntaxError& error);

} // namespace vesk

#endif
