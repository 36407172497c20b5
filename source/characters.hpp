// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_CHARACTERS_HPP
#define SOURCE_CHARACTERS_HPP

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Characters in UTF-8.
namespace vesk::source
{

struct Character
{
  std::uint32_t number = 0;
  std::size_t size = 0; ///< in bytes; 0 where there is no character
};

/// The character that begins at a place of a text, which must be in it.
Character characterAt(std::string_view text, std::size_t offset);

/// Whether XML allows it.
bool isXmlCharacter(std::uint32_t number);

/// As in "U+0001".
std::string codeOf(std::uint32_t number);

/// Throws std::invalid_argument for a text that XML cannot hold.
void requireXmlCharacters(std::string_view text);

} // namespace vesk::source

#endif
