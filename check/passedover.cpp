// SPDX-License-Identifier: Apache-2.0
#include <check/passedover.hpp>
#include <package/xml/manifesttree.hpp>
#include <source/lines.hpp>

#include <algorithm>
#include <tuple>
#include <utility>

namespace vesk::check
{
namespace
{
// For each, the text is parsed again.
constexpr std::size_t mostPassedOver = 4;

/// Of an attribute, only the name is the fault's range; its value has to go with it.
source::Range faultyPart(std::string_view text, const source::Range& range)
{
  const std::size_t quote = text.find_first_not_of("= \t\r\n", range.end);
  const bool isAttribute =
      quote != std::string_view::npos &&
      text.substr(range.end, quote - range.end).find('=') != std::string_view::npos &&
      (text[quote] == '"' || text[quote] == '\'');
  const std::size_t end = isAttribute ? text.find(text[quote], quote + 1) : std::string_view::npos;
  return end == std::string_view::npos
             ? range
             : source::Range{range.begin, static_cast<std::uint32_t>(end + 1)};
}

void makeBlank(std::string& text, const source::Range& part)
{
  const auto begin = text.begin() + static_cast<std::ptrdiff_t>(part.begin);
  std::replace_if(
      begin, begin + static_cast<std::ptrdiff_t>(part.size()),
      [](char c) { return c != '\n' && c != '\r'; }, ' ');
}

bool isSame(const LoadError& left, const LoadError& right)
{
  return left.line == right.line && left.column == right.column && left.message == right.message;
}
/// Whether the readers read on to the end, so that what is not closed before that can be what stops them.
bool isAtEnd(const LoadError& refusal, std::string_view text)
{
  const std::size_t last = text.find_last_not_of(" \t\r\n");
  const source::Place end =
      source::Lines(text).placeOf(last == std::string_view::npos ? 0 : last + 1);
  return std::tie(refusal.line, refusal.column) >= std::tie(end.line, end.utf16Column);
}
} // namespace

StrictFaults strictFaults(const StrictText& text, const LoadError& refusal)
{
  StrictFaults faults{{}, text.error};
  std::string rest(text.document.text());
  while (faults.stop && faults.passedOver.size() < mostPassedOver && !isAtEnd(refusal, rest))
  {
    const source::Range part = faultyPart(rest, faults.stop->range);
    if (part.size() == 0 || part.end > rest.size())
    {
      break;
    }
    // The readers pass over a fault without which they stop where they do with it.
    makeBlank(rest, part);
    LoadError error;
    if (parseManifest(rest, error) || !isSame(error, refusal))
    {
      break;
    }
    std::optional<source::Error> next = strictTextOfText(rest).error;
    if (next && next->range.begin <= faults.stop->range.begin)
    {
      break;
    }
    faults.passedOver.push_back(*std::exchange(faults.stop, std::move(next)));
  }
  return faults;
}

} // namespace vesk::check
