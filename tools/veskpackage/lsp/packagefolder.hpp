// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PACKAGEFOLDER_HPP
#define TOOLS_VESKPACKAGE_LSP_PACKAGEFOLDER_HPP

#include <string>
#include <string_view>
#include <vector>

/// What lies in the folder of a manifest, and nothing outside of it, wherever links lead. Texts that are
/// no paths there are answered as if nothing were there. Nothing is thrown.
namespace tool::lsp
{

/// The absolute path of a file below the folder; empty when there is none. With \p canLackExtension it
/// is also the first, by name, that has the path with an extension added.
std::string fileIn(const std::string& folder, std::string_view path, bool canLackExtension);

/// What lies in the folder at a path below it: names in their order, those of folders with "/" behind.
/// Without hidden ones, and no more than a thousand.
std::vector<std::string> namesIn(const std::string& folder, std::string_view path);

} // namespace tool::lsp

#endif
