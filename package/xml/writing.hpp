// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_WRITING_HPP
#define PACKAGE_XML_WRITING_HPP

#include <package/xml/names.hpp>

#include <list>
#include <map>
#include <string>

class QDomDocument;
class QDomElement;
class QDomNode;

namespace vesk
{

// All texts are UTF-8. What they hold beyond the first NUL byte, and characters that XML cannot
// carry, are left out, so that the document written can always be read.

/// A new element, not attached to anything.
QDomElement createElement(QDomDocument& doc, const XmlName& tag);

/// A new element, the last child of \p parent.
QDomElement appendElement(QDomDocument& doc, QDomNode& parent, const XmlName& tag);

/// Sets an attribute, also to an empty value.
void setAttribute(QDomElement& element, const XmlName& name, const std::string& value);

/// Sets an attribute unless its value is empty.
void addAttribute(QDomElement& element, const XmlName& name, const std::string& value);

/// Appends a text node, also an empty one.
void addTextNode(QDomDocument& doc, QDomElement& element, const std::string& text);

/// Appends the text as a CDATA section; as several where it holds "]]>", which would end one.
void addCDATANode(QDomDocument& doc, QDomElement& element, const std::string& text);

/// Appends a group element unless \p texts is empty, and to it an item for each text that is not
/// empty, with the key as the attribute \p attribute.
void addLocalizedDataElement(QDomDocument& doc, QDomNode& parent,
                             const std::map<std::string, std::string>& texts,
                             const XmlName& groupTag, const XmlName& itemTag,
                             const XmlName& attribute);

/// As addLocalizedDataElement, with an item for each text of each list, as CDATA when \p useCDATA.
void addDataListElementWithAttribute(QDomDocument& doc, QDomNode& parent,
                                     const std::map<std::string, std::list<std::string>>& lists,
                                     const XmlName& groupTag, const XmlName& itemTag,
                                     const XmlName& attribute, bool useCDATA);

} // namespace vesk

#endif
