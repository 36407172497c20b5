// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_LINKS_HPP
#define TOOLS_VESKPACKAGE_LSP_LINKS_HPP

#include "lsp/manuscript.hpp"

namespace tool::lsp
{

/// Where a manifest names files that lie in its folder, with where they are, as the protocol's
/// DocumentLinks: by paths, and by the programs of services.
Json linksOf(const Manuscript& manuscript);

} // namespace tool::lsp

#endif
