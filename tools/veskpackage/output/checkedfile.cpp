// SPDX-License-Identifier: Apache-2.0
#include "output/checkedfile.hpp"

#include "files/manifestfile.hpp"

#include <algorithm>

namespace tool
{

using vesk::check::Finding;
using vesk::check::Position;

std::string_view CheckedFile::text() const
{
  if (!decoded)
  {
    decoded = inUtf8(bytes);
  }
  return *decoded;
}

std::string_view CheckedFile::text(const Finding& finding) const
{
  const std::size_t begin = std::min(finding.begin.offset, text().size());
  const std::size_t end = std::clamp(finding.end.offset, begin, text().size());
  return isSomewhere(finding) ? text().substr(begin, end - begin) : std::string_view();
}

Position CheckedFile::positionOf(std::size_t offset) const
{
  if (!lines)
  {
    lines.emplace(text());
  }
  const std::size_t within = std::min(offset, text().size());
  const vesk::source::Place place = lines->placeOf(within);
  const char* const begin = lines->line(place.line).data();
  // A character of four bytes takes two units, any other one.
  const auto more = std::count_if(begin, text().data() + within,
                                  [](char c) { return static_cast<unsigned char>(c) >= 0xF0U; });
  return {place.line, place.column, place.column + static_cast<int>(more), within};
}

} // namespace tool
