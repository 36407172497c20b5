// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_TEXT_HPP
#define PACKAGE_XML_TEXT_HPP

#include <QString>

#include <string>

namespace vesk
{

/// UTF-8 text as a QString, up to the first NUL byte. A byte order mark at its start is dropped.
QString toQString(const std::string& text);

/// A QString as UTF-8, up to the first NUL.
std::string fromQString(const QString& text);

/// Sets \p utf8 to the whole text as UTF-8.
void assignUtf8(std::string& utf8, const QString& text);

/// Like toQString, but keeps a byte order mark, an ordinary character within a document, and leaves
/// out characters for which a parser would refuse the document: control characters except tab,
/// newline and carriage return, U+FFFE and U+FFFF.
QString toXmlText(const std::string& text);

/// Whether \p name can be an element's name for any XML parser, with and without namespaces.
bool isXmlName(const QString& name);

} // namespace vesk

#endif
