// SPDX-License-Identifier: Apache-2.0
#include "characters.hpp"

#include <source/edits.hpp>

#include <array>
#include <cstdio>
#include <stdexcept>

namespace vesk::source
{

Character characterAt(std::string_view text, std::size_t offset)
{
  const auto lead = static_cast<unsigned char>(text[offset]);
  const std::size_t size = lead < 0x80U                    ? 1
                           : lead >= 0xC2U && lead < 0xE0U ? 2
                           : lead >= 0xE0U && lead < 0xF0U ? 3
                           : lead >= 0xF0U && lead < 0xF5U ? 4
                                                           : 0;
  if (size == 0 || offset + size > text.size())
  {
    return {};
  }
  std::uint32_t number = size == 1 ? lead : lead & (0xFFU >> (size + 1));
  for (const char c : text.substr(offset + 1, size - 1))
  {
    const auto next = static_cast<unsigned char>(c);
    if ((next & 0xC0U) != 0x80U)
    {
      return {};
    }
    number = number << 6U | (next & 0x3FU);
  }
  constexpr std::array<std::uint32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = number >= 0xD800 && number < 0xE000;
  return number < least[size] || number > 0x10FFFF || isSurrogate ? Character()
                                                                  : Character{number, size};
}

bool isXmlCharacter(std::uint32_t number)
{
  return (number >= 0x20 || number == '\t' || number == '\n' || number == '\r') &&
         number != 0xFFFE && number != 0xFFFF;
}

std::string codeOf(std::uint32_t number)
{
  std::array<char, 16> code{};
  const int size = std::snprintf(code.data(), code.size(), "U+%04X", number);
  return {code.data(), static_cast<std::size_t>(size)};
}

void requireXmlCharacters(std::string_view text)
{
  for (std::size_t at = 0; at < text.size();)
  {
    const Character character = characterAt(text, at);
    if (character.size == 0)
    {
      throw std::invalid_argument("bytes that are no text in UTF-8");
    }
    if (!isXmlCharacter(character.number))
    {
      throw std::invalid_argument("the character " + codeOf(character.number) +
                                  " is not allowed in XML");
    }
    at += character.size;
  }
}

} // namespace vesk::source
