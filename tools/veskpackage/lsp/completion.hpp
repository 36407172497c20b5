// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_COMPLETION_HPP
#define TOOLS_VESKPACKAGE_LSP_COMPLETION_HPP

#include "lsp/manuscript.hpp"

#include <cstddef>

namespace tool::lsp
{

/// What can be written at a place, as the protocol's CompletionList: elements, attributes and values that
/// the place can hold, the most likely first. Of a text that is not finished what can be told is taken.
Json completionAt(const Manuscript& manuscript, std::size_t offset);

} // namespace tool::lsp

#endif
