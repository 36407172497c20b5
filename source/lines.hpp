// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_LINES_HPP
#define SOURCE_LINES_HPP

#include <source/export.hpp>

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
};

/// Finds lines in a text, which must outlive it. Lines end with "\n", "\r\n" or "\r".
class VESKPACKAGE_SOURCE_EXPORT Lines
{
public:
  explicit Lines(std::string_view textInUtf8);

  /// Where a byte of the text stands; the end of the text for a greater offset.
  Place placeOf(std::size_t offset) const;
  /// A line without its end, counted from 1; empty when there is none.
  std::string_view line(int number) const;
  int count() const { return static_cast<int>(starts.size()); }

private:
  std::string_view text;
  std::vector<std::size_t> starts;
};

} // namespace vesk::source

#endif
