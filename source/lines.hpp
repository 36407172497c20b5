// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_LINES_HPP
#define SOURCE_LINES_HPP

#include <source/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vesk::source
{

/// A place as people count: lines, and characters in a line, both from 1. A byte order mark is no
/// character.
struct Place
{
  int line = 1;
  int column = 1;
  int utf16Column = 1; ///< the column in UTF-16 code units, as many editors count
};

/// Finds lines in a text, which must outlive it. Lines end with "\n", "\r\n" or "\r". Looks through
/// the text once; places are found in no time, however long a line is.
class VESKPACKAGE_SOURCE_EXPORT Lines
{
public:
  explicit Lines(std::string_view textInUtf8);

  /// Where a byte of the text stands; the end of the text for a greater offset.
  Place placeOf(std::size_t offset) const;
  /// A line without its end, counted from 1; empty when there is none.
  std::string_view line(int number) const;
  /// The offset at which a line begins, counted from 1; behind a byte order mark. The end of the text
  /// when there is no such line.
  std::size_t beginOf(int number) const;
  int count() const { return static_cast<int>(starts.size()); }

private:
  /// How many characters, and how many UTF-16 code units for them.
  struct Length
  {
    std::size_t characters = 0;
    std::size_t units = 0;
  };
  static Length lengthOf(std::string_view part);
  Length lengthBefore(std::size_t offset) const;

  std::string_view text;
  std::vector<std::size_t> starts;
  std::vector<Length> blocks; ///< what is in front of each block of bytes; none where all is ASCII
};

} // namespace vesk::source

#endif
