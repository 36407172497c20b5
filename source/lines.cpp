// SPDX-License-Identifier: Apache-2.0
#include "characters.hpp"

#include <source/lines.hpp>

#include <algorithm>

namespace vesk::source
{

namespace
{
constexpr std::size_t blockSize = 1024;

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80U; }
} // namespace

Lines::Lines(std::string_view textInUtf8) : text(textInUtf8)
{
  starts.push_back(text.substr(0, byteOrderMark.size()) == byteOrderMark ? byteOrderMark.size()
                                                                         : 0);
  bool isPlain = true;
  for (std::size_t at = 0; at < text.size(); ++at)
  {
    const bool isEnd = text[at] == '\n' || (text[at] == '\r' && text.substr(at + 1, 1) != "\n");
    if (isEnd)
    {
      starts.push_back(at + 1);
    }
    isPlain = isPlain && isAscii(text[at]);
  }
  Length before;
  for (std::size_t at = 0; at < text.size() && !isPlain; at += blockSize)
  {
    blocks.push_back(before);
    const Length block = lengthOf(text.substr(at, blockSize));
    before = {before.characters + block.characters, before.units + block.units};
  }
}

Lines::Length Lines::lengthOf(std::string_view part)
{
  Length length;
  for (const char c : part)
  {
    const auto byte = static_cast<unsigned char>(c);
    const bool isFirst = (byte & 0xC0U) != 0x80U;
    length.characters += isFirst ? 1 : 0;
    length.units += !isFirst ? 0 : byte >= 0xF0U ? 2 : 1;
  }
  return length;
}

Lines::Length Lines::lengthBefore(std::size_t offset) const
{
  if (blocks.empty())
  {
    return {offset, offset};
  }
  const std::size_t block = std::min(offset / blockSize, blocks.size() - 1);
  const Length rest = lengthOf(text.substr(block * blockSize, offset - block * blockSize));
  return {blocks[block].characters + rest.characters, blocks[block].units + rest.units};
}

Place Lines::placeOf(std::size_t offset) const
{
  const std::size_t place = std::clamp(offset, starts.front(), text.size());
  const auto behind = std::upper_bound(starts.begin(), starts.end(), place);
  const Length before = lengthBefore(place);
  const Length beforeLine = lengthBefore(*std::prev(behind));
  return {static_cast<int>(behind - starts.begin()),
          static_cast<int>(before.characters - beforeLine.characters) + 1,
          static_cast<int>(before.units - beforeLine.units) + 1};
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

std::size_t Lines::beginOf(int number) const
{
  return number < 1 || number > count() ? text.size()
                                        : starts[static_cast<std::size_t>(number) - 1];
}

} // namespace vesk::source
