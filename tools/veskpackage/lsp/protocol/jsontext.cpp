// SPDX-License-Identifier: Apache-2.0
#include "lsp/protocol/jsontext.hpp"

#include <algorithm>
#include <cstddef>

namespace tool::lsp
{
namespace
{
// An editor's messages nest some ten levels, and a value takes up twenty bytes of them. In memory it
// takes up a hundred.
constexpr std::size_t mostLevels = 100;
constexpr std::size_t leastOfValue = 8;
constexpr std::size_t alwaysTaken = 10000;
constexpr std::size_t mostValues = 1000000;

bool isWithinLimits(std::string_view text)
{
  const std::size_t most = std::min(mostValues, std::max(alwaysTaken, text.size() / leastOfValue));
  std::size_t level = 0;
  std::size_t values = 1;
  bool isInString = false;
  for (std::size_t at = 0; at < text.size() && level <= mostLevels && values <= most; ++at)
  {
    const char c = text[at];
    if (isInString)
    {
      at += c == '\\' ? 1 : 0;
      isInString = c != '"';
    }
    else
    {
      isInString = c == '"';
      const bool isOpening = c == '[' || c == '{';
      level += isOpening ? 1 : 0;
      level -= (c == ']' || c == '}') && level > 0 ? 1 : 0;
      values += isOpening || c == ',' ? 1 : 0;
    }
  }
  return level <= mostLevels && values <= most;
}
} // namespace

std::optional<Json> parsed(std::string_view text)
{
  if (!isWithinLimits(text))
  {
    return std::nullopt;
  }
  Json value = Json::parse(text, nullptr, false);
  return value.is_discarded() ? std::nullopt : std::make_optional(std::move(value));
}

std::string textOf(const Json& value)
{
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace tool::lsp
