// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_SERIALIZING_HPP
#define PACKAGE_XML_SERIALIZING_HPP

#include <string>

class QDomDocument;

namespace vesk
{

/// A document as UTF-8, the very bytes of the toolkit's toString(indent) but for the order of
/// attributes: theirs changes with every process, here they are ordered by name. Takes what a
/// manifest is made of: elements without namespaces, text, CDATA sections, processing instructions.
std::string serialize(const QDomDocument& document, int indent);

} // namespace vesk

#endif
