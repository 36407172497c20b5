// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_FORMATTING_HPP
#define TOOLS_VESKPACKAGE_LSP_FORMATTING_HPP

#include "lsp/manuscript.hpp"

namespace tool::lsp
{

/// The edits that lay a manifest out, as `fmt` does, indented as it is for the most part; null where it
/// is not well-formed.
Json formattingOf(const Manuscript& manuscript);

} // namespace tool::lsp

#endif
