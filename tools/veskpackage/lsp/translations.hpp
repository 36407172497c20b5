// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_TRANSLATIONS_HPP
#define TOOLS_VESKPACKAGE_LSP_TRANSLATIONS_HPP

#include <source/document.hpp>
#include <source/edits.hpp>

#include <string>
#include <vector>

namespace tool::lsp
{

/// The languages that a list of texts lacks: those that the package lists for such texts and of which it
/// has no text, nor one of a regional variant. None where \p list is no such list.
std::vector<std::string> missingLanguages(const vesk::source::Document& document,
                                          const vesk::source::Node& list);

/// The edits that add an entry with an empty text for each of some languages.
std::vector<vesk::source::Edit> additionOf(const std::vector<std::string>& languages,
                                           const vesk::source::Document& document,
                                           const vesk::source::Node& list);

} // namespace tool::lsp

#endif
