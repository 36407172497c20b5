// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_SYMBOLS_HPP
#define TOOLS_VESKPACKAGE_LSP_SYMBOLS_HPP

#include "lsp/manuscript.hpp"

#include <string>
#include <vector>

namespace tool::lsp
{

/// What a manifest holds, as the protocol's DocumentSymbols; as SymbolInformation for an editor that
/// knows no hierarchy.
Json symbolsOf(const Manuscript& manuscript);

/// Of the packages and what they contain and provide those whose name, uuid or text has \p query in
/// it, in letters of either case, as the protocol's SymbolInformation; no more than a thousand.
Json symbolsIn(const std::vector<const Manuscript*>& manuscripts, const std::string& query);

} // namespace tool::lsp

#endif
