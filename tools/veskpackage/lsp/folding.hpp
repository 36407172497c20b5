// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_FOLDING_HPP
#define TOOLS_VESKPACKAGE_LSP_FOLDING_HPP

#include "lsp/manuscript.hpp"

namespace tool::lsp
{

/// What can be folded in a manifest: elements and comments of several lines, as the protocol's
/// FoldingRanges. The line of an end tag stays to be seen.
Json foldingOf(const Manuscript& manuscript);

} // namespace tool::lsp

#endif
