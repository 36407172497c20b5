// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_RENAME_HPP
#define TOOLS_VESKPACKAGE_LSP_RENAME_HPP

#include "lsp/manuscript.hpp"

#include <cstddef>
#include <string>

/// Codes of languages are what can be renamed: wherever a manifest has one as such, not in prose.
namespace tool::lsp
{

/// The code at a place, with its range, as the protocol's answer; null where there is none.
Json renamableAt(const Manuscript& manuscript, std::size_t offset);

/// The protocol's WorkspaceEdit that gives all codes equal to that at a place a new name. Throws
/// RequestError, which says why, where there is none, for what is no code, where a list would have one
/// code twice, and for a text that is not well-formed.
Json renameAt(const Manuscript& manuscript, std::size_t offset, const std::string& newName);

} // namespace tool::lsp

#endif
