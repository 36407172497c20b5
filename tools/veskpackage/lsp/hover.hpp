// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_HOVER_HPP
#define TOOLS_VESKPACKAGE_LSP_HOVER_HPP

#include "lsp/manuscript.hpp"

#include <cstddef>

namespace tool::lsp
{

/// What there is to say of a place, as the protocol's Hover: of the name of an element or attribute
/// what it means, of a code its language, of what is wrong there why. Null when that is nothing.
Json hoverAt(const Manuscript& manuscript, std::size_t offset);

} // namespace tool::lsp

#endif
