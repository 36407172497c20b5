// SPDX-License-Identifier: Apache-2.0
#include "characters.hpp"

#include <source/lines.hpp>

#include <algorithm>

namespace vesk::source
{

Lines::Lines(std::string_view textInUtf8) : text(textInUtf8)
{
  starts.push_back(text.substr(0, byteOrderMark.size()) == byteOrderMark ? byteOrderMark.size()
                                                                         : 0);
  for (std::size_t at = text.find_first_of(lineEnds); at != std::string_view::npos;
       at = text.find_first_of(lineEnds, at))
  {
    at += text.substr(at, 2) == "\r\n" ? 2 : 1;
    starts.push_back(at);
  }
}

Place Lines::placeOf(std::size_t offset) const
{
  const std::size_t place = std::clamp(offset, starts.front(), text.size());
  const auto behind = std::upper_bound(starts.begin(), starts.end(), place);
  const std::string_view before = text.substr(*std::prev(behind), place - *std::prev(behind));
  const auto characters =
      std::count_if(before.begin(), before.end(),
                    [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
  return {static_cast<int>(behind - starts.begin()), static_cast<int>(characters) + 1};
}

std::string_view Lines::line(int number) const
{
  if (number < 1 || number > count())
  {
    return {};
  }
  const auto index = static_cast<std::size_t>(number) - 1;
  const std::size_t end = index + 1 < starts.size() ? starts[index + 1] : text.size();
  const std::string_view whole = text.substr(starts[index], end - starts[index]);
  const std::size_t length = whole.find_last_not_of(lineEnds);
  return length == std::string_view::npos ? std::string_view() : whole.substr(0, length + 1);
}

} // namespace vesk::source
