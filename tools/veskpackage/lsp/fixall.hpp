// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_FIXALL_HPP
#define TOOLS_VESKPACKAGE_LSP_FIXALL_HPP

#include "lsp/manuscript.hpp"

#include <vector>

namespace tool::lsp
{

/// The edits that mend all that can surely be mended, also what comes to light by that. None where there
/// is nothing.
std::vector<vesk::source::Edit> fixAll(const Manuscript& manuscript);

} // namespace tool::lsp

#endif
