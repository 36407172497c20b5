// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_CODEACTIONS_HPP
#define TOOLS_VESKPACKAGE_LSP_CODEACTIONS_HPP

#include "lsp/manuscript.hpp"

namespace tool::lsp
{

/// Whether an editor takes actions as such. Others take commands only, and there are none.
bool takesCodeActions(const Client& client);

/// The kinds of what codeActionsFor() gives.
Json codeActionKinds();

/// What can be done to a manifest at a range, as the protocol's CodeActions, by the parameters of the
/// request: mend what is wrong there or in all of it, add missing translations, remove an element. Throws
/// RequestError for what is no range. Nothing for an editor that does not take them.
Json codeActionsFor(const Manuscript& manuscript, const Json& params);

} // namespace tool::lsp

#endif
