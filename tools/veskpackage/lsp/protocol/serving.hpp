// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_SERVING_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_SERVING_HPP

#include "lsp/protocol/session.hpp"

#include <functional>
#include <istream>

namespace tool::lsp
{

/// Gives a session what comes from an editor, until it is over or the stream ends. A thread of its own
/// reads, so that what waits can be cancelled. Whenever nothing waits, \p work is called until it gives
/// false: it has nothing left to do.
void serve(std::istream& in, Session& session, const std::function<bool()>& work);

} // namespace tool::lsp

#endif
