// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_CHARACTERS_HPP
#define SOURCE_CHARACTERS_HPP

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Characters in UTF-8, and the marks of XML that several files look for.
namespace vesk::source
{

inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
inline constexpr std::string_view beginOfCData = "<![CDATA[";
inline constexpr std::string_view endOfCData = "]]>";
inline constexpr std::string_view lineEnds = "\r\n";
inline constexpr std::string_view blanks = " \t\r\n";

inline bool isBlank(char c) { return blanks.find(c) != std::string_view::npos; }

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

} // namespace vesk::source

#endif
