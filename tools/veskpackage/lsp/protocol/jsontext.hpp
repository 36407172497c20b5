// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_JSONTEXT_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_JSONTEXT_HPP

#include "lsp/protocol/json.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace tool::lsp
{

/// What a text says; none when it is no JSON, nests deeper than a stack should have to hold, or has so
/// many values that they would take up far more memory than the text.
std::optional<Json> parsed(std::string_view text);

/// As text, on one line. Bytes that are not UTF-8, as a file's name may have, are replaced.
std::string textOf(const Json& value);

} // namespace tool::lsp

#endif
