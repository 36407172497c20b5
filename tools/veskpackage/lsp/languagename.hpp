// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_LANGUAGENAME_HPP
#define TOOLS_VESKPACKAGE_LSP_LANGUAGENAME_HPP

#include <string>
#include <string_view>

namespace tool::lsp
{

/// What people call the language of a code, such as "English (United States)" for "en_US" or "en-US"; of
/// script and country what is known. Empty where nobody knows the language.
std::string languageNameOf(std::string_view code);

} // namespace tool::lsp

#endif
