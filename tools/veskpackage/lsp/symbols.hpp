// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_SYMBOLS_HPP
#define TOOLS_VESKPACKAGE_LSP_SYMBOLS_HPP

#include "lsp/manuscript.hpp"

#include <string>

namespace tool::lsp
{

/// What a manifest holds, as the protocol's DocumentSymbols; as SymbolInformation for an editor that
/// knows no hierarchy.
Json symbolsOf(const Manuscript& manuscript);

/// Adds to an array of the protocol's SymbolInformation, of no more than a thousand, the package and what
/// it contains and provides, if \p query is in name or uuid, in letters of either case.
void addSymbolsOf(const Manuscript& manuscript, const std::string& query, Json& found);

} // namespace tool::lsp

#endif
