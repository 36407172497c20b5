// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_LANGUAGEUSES_HPP
#define TOOLS_VESKPACKAGE_LSP_LANGUAGEUSES_HPP

#include <format/format.hpp>

#include <cstddef>
#include <string_view>
#include <vector>

namespace tool::lsp
{

/// A code of a language in a manifest.
struct LanguageUse
{
  std::string_view code;                ///< as it stands there, without blanks around it
  const vesk::format::Element* element; ///< that has it, in an attribute or as its text
  std::size_t begin;                    ///< of the code
  std::string_view list;                ///< the name of the element around that one
  std::size_t listBegin;                ///< where the content of that begins
};

/// All codes in a text that somebody is writing, in its order; none that is empty. Takes time in
/// proportion to the text.
std::vector<LanguageUse> languageUsesIn(std::string_view text);

/// Whether an element has a code that the same list may not have once more.
bool hasKeyOfLanguage(const vesk::format::Element& element);

} // namespace tool::lsp

#endif
