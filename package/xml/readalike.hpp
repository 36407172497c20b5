// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_READALIKE_HPP
#define PACKAGE_XML_READALIKE_HPP

#include <package/xml/openelements.hpp>
#include <source/document.hpp>

#include <optional>
#include <string>

namespace vesk
{

/// The tree of `source/` of a manifest's bytes, if it is certain that the toolkit takes them, too, and
/// that readers find the same in both trees (see XmlNode). It costs a third of the toolkit's tree.
/// Takes \p bytes only then; else gives nothing, and the toolkit is to say what it makes of them.
std::optional<source::Document> parseReadAlike(std::string& bytes, Namespaces namespaces);

} // namespace vesk

#endif
