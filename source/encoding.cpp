// SPDX-License-Identifier: Apache-2.0
#include "characters.hpp"

#include <source/encoding.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <iconv.h>
#include <memory>
#include <stdexcept>

namespace vesk::source
{
namespace
{
struct Beginning
{
  std::string_view bytes;
  const char* encoding;
};

// Longest first: that of UTF-32 begins with that of UTF-16.
constexpr std::array marks{
    Beginning{{"\x00\x00\xFE\xFF", 4}, "UTF-32BE"}, Beginning{{"\xFF\xFE\x00\x00", 4}, "UTF-32LE"},
    Beginning{{"\xEF\xBB\xBF", 3}, "UTF-8"}, Beginning{{"\xFE\xFF", 2}, "UTF-16BE"},
    Beginning{{"\xFF\xFE", 2}, "UTF-16LE"}};
// "<" in the encodings in which it is more than a byte.
constexpr std::array beginnings{
    Beginning{{"\x00\x00\x00<", 4}, "UTF-32BE"}, Beginning{{"<\x00\x00\x00", 4}, "UTF-32LE"},
    Beginning{{"\x00<", 2}, "UTF-16BE"}, Beginning{{"<\x00", 2}, "UTF-16LE"}};

const Beginning* beginningOf(std::string_view bytes, const Beginning* begin, const Beginning* end)
{
  const auto* const found =
      std::find_if(begin, end,
                   [bytes](const Beginning& candidate)
                   { return bytes.substr(0, candidate.bytes.size()) == candidate.bytes; });
  return found != end ? found : nullptr;
}

} // namespace

std::string_view declaredEncoding(std::string_view bytes)
{
  constexpr std::string_view begin = "<?xml";
  if (bytes.substr(0, begin.size()) != begin)
  {
    return {};
  }
  const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
  const std::size_t name = declaration.find("encoding");
  const std::size_t open = declaration.find_first_of("\"'", name);
  if (name == std::string_view::npos || open == std::string_view::npos)
  {
    return {};
  }
  const std::size_t close = declaration.find(declaration[open], open + 1);
  return close == std::string_view::npos ? std::string_view()
                                         : declaration.substr(open + 1, close - open - 1);
}

namespace
{
struct CloseConverter
{
  void operator()(void* converter) const { iconv_close(converter); }
};
using Converter = std::unique_ptr<void, CloseConverter>;

/// Null when an encoding is not known.
Converter converterBetween(const std::string& to, const std::string& from)
{
  // The system takes options behind a name, which a stranger's declaration must not give.
  const auto isName = [](const std::string& name)
  {
    return !name.empty() && std::all_of(name.begin(), name.end(),
                                        [](unsigned char c) {
                                          return std::isalnum(c) != 0 || c == '-' || c == '_' ||
                                                 c == '.' || c == ':';
                                        });
  };
  if (!isName(to) || !isName(from))
  {
    return nullptr;
  }
  iconv_t converter = iconv_open(to.c_str(), from.c_str());
  const bool isKnown = reinterpret_cast<std::intptr_t>(converter) != -1;
  return Converter(isKnown ? converter : nullptr);
}

/// Converts as much as it can; gives the number of bytes that it could.
std::size_t convert(const Converter& converter, std::string_view from, std::string& to)
{
  auto* in = const_cast<char*>(from.data()); // which iconv does not change
  std::size_t left = from.size();
  std::array<char, 4096> piece{};
  bool isFlushed = false;
  while (!isFlushed)
  {
    char* out = piece.data();
    std::size_t room = piece.size();
    isFlushed = left == 0; // the last call writes what some encodings need at the end
    const std::size_t result = isFlushed ? iconv(converter.get(), nullptr, nullptr, &out, &room)
                                         : iconv(converter.get(), &in, &left, &out, &room);
    const bool isFaulty = result == static_cast<std::size_t>(-1) && errno != E2BIG;
    to.append(piece.data(), piece.size() - room);
    if (isFaulty)
    {
      break;
    }
  }
  return from.size() - left;
}

std::string referenceTo(std::uint32_t character)
{
  std::array<char, 16> text{};
  const int length = std::snprintf(text.data(), text.size(), "&#x%X;", character);
  return {text.data(), static_cast<std::size_t>(length)};
}
} // namespace

bool Encoding::isUtf8() const
{
  std::string upper = name;
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return upper == "UTF-8" || upper == "UTF8";
}

Encoding encodingOf(std::string_view bytes)
{
  if (const Beginning* found = beginningOf(bytes, marks.data(), marks.data() + marks.size()))
  {
    return {found->encoding, true};
  }
  if (const Beginning* found =
          beginningOf(bytes, beginnings.data(), beginnings.data() + beginnings.size()))
  {
    return {found->encoding, false};
  }
  const std::string_view declared = declaredEncoding(bytes);
  return declared.empty() ? Encoding() : Encoding{std::string(declared), false};
}

Decoded decode(std::string_view bytes, const Encoding& encoding)
{
  Decoded decoded;
  const Converter converter = converterBetween("UTF-8", encoding.name);
  if (!converter)
  {
    decoded.isKnown = false;
    return decoded;
  }
  decoded.text.reserve(bytes.size());
  const std::size_t good = convert(converter, bytes, decoded.text);
  if (good != bytes.size())
  {
    decoded.faultyByte = good;
  }
  return decoded;
}

std::string encode(std::string_view text, const Encoding& encoding)
{
  const Converter converter = converterBetween(encoding.name, "UTF-8");
  if (!converter)
  {
    throw std::invalid_argument("nobody knows the encoding \"" + encoding.name + '"');
  }
  std::string bytes;
  bytes.reserve(text.size());
  while (true)
  {
    text.remove_prefix(convert(converter, text, bytes));
    if (text.empty())
    {
      return bytes;
    }
    const auto [number, size] = characterAt(text, 0);
    if (size <= 1) // ASCII is in every encoding of XML
    {
      throw std::invalid_argument("a text that is no UTF-8");
    }
    convert(converter, referenceTo(number), bytes);
    text.remove_prefix(size);
  }
}

} // namespace vesk::source
