// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_ENCODING_HPP
#define SOURCE_ENCODING_HPP

#include <source/export.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vesk::source
{

/// How the bytes of a file stand for characters.
struct Encoding
{
  std::string name = "UTF-8"; ///< "UTF-16LE" or "UTF-16BE" for UTF-16, else as it was declared
  bool hasMark = false;       ///< whether the file begins with a byte order mark

  VESKPACKAGE_SOURCE_EXPORT bool isUtf8() const;
};

/// The encoding that an XML declaration at the beginning of a text declares; empty when there is none.
VESKPACKAGE_SOURCE_EXPORT std::string_view declaredEncoding(std::string_view text);

/// Tells the encoding of a file by its byte order mark, its first bytes, and the XML declaration, in
/// this order, as XML demands; UTF-8 without any of them.
VESKPACKAGE_SOURCE_EXPORT Encoding encodingOf(std::string_view bytes);

/// A text in UTF-8, or where its bytes make no sense.
struct Decoded
{
  std::string text;
  std::optional<std::size_t> faultyByte; ///< counted from 0; the text ends before it
  bool isKnown = true;                   ///< false when nobody knows the encoding; there is no text
};

/// What the bytes of a file stand for, byte order mark included.
VESKPACKAGE_SOURCE_EXPORT Decoded decode(std::string_view bytes, const Encoding& encoding);

/// The bytes for a text in UTF-8. Characters that the encoding lacks become references, as in
/// "&#x20AC;". Throws std::invalid_argument when the text is not UTF-8 or nobody knows the encoding.
VESKPACKAGE_SOURCE_EXPORT std::string encode(std::string_view text, const Encoding& encoding);

} // namespace vesk::source

#endif
