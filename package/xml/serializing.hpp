// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_SERIALIZING_HPP
#define PACKAGE_XML_SERIALIZING_HPP

#include <string>

class QDomDocument;

namespace vesk
{

/// A document as UTF-8: the same bytes as the toolkit's toString(indent), except that attributes
/// are ordered by name; the toolkit's order changes with every process. Supports what a manifest is
/// made of: elements without namespaces, text, CDATA sections, processing instructions.
std::string serialize(const QDomDocument& document, int indent);

} // namespace vesk

#endif
