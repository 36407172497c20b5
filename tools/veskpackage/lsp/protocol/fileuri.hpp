// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_FILEURI_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_FILEURI_HPP

#include <optional>
#include <string>
#include <string_view>

namespace tool::lsp
{

/// The absolute path that a file: URI of this machine names; none of any other URI, and of one with a
/// percent sign that stands for nothing or for a NUL byte.
std::optional<std::string> pathOf(std::string_view uri);

/// The file: URI of an absolute path.
std::string fileUriOf(const std::string& path);

} // namespace tool::lsp

#endif
