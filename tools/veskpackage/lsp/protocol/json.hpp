// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_JSON_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_JSON_HPP

#include <nlohmann/json.hpp>

namespace tool::lsp
{

using Json = nlohmann::json;

} // namespace tool::lsp

#endif
