// SPDX-License-Identifier: Apache-2.0
#include "output/checkedfile.hpp"

#include <algorithm>

namespace tool
{

namespace source = vesk::source;

using vesk::check::Finding;
using vesk::check::Position;

std::string_view CheckedFile::text() const
{
  if (source::encodingOf(bytes).isUtf8())
  {
    return bytes;
  }
  if (!decoded)
  {
    decoded = source::Document::parse(bytes, source::BlankTexts::LeftOut);
  }
  return decoded->text();
}

std::string_view CheckedFile::text(const Finding& finding) const
{
  const std::size_t begin = std::min(finding.begin.offset, text().size());
  const std::size_t end = std::clamp(finding.end.offset, begin, text().size());
  return hasExactPlace(finding) ? text().substr(begin, end - begin) : std::string_view();
}

Position CheckedFile::positionOf(std::size_t offset) const
{
  if (!lines)
  {
    lines.emplace(text());
  }
  const source::Place place = lines->placeOf(offset);
  return {place.line, place.column, place.utf16Column, offset};
}

bool hasPlace(const Finding& finding) { return finding.begin.line > 0; }

bool hasExactPlace(const Finding& finding)
{
  const Position& begin = finding.begin;
  return begin.offset > 0 || (begin.line == 1 && begin.column == 1);
}

std::string CheckedFile::inFile(const std::string& edited) const
{
  const std::string_view all = text();
  const std::size_t end = all.find_first_of("\r\n");
  const std::string_view lineEnd = end == std::string_view::npos || all[end] == '\n' ? "\n"
                                   : all.substr(end, 2) == "\r\n"                    ? "\r\n"
                                                                                     : "\r";
  std::string result;
  for (const char c : edited)
  {
    result += c == '\n' ? lineEnd : std::string_view(&c, 1);
  }
  return result;
}

std::string withoutNumbers(const std::string& place)
{
  std::string kept;
  for (std::size_t i = 0; i < place.size(); ++i)
  {
    const std::size_t end = place.find_first_not_of("0123456789", i + 1);
    if (place[i] == '[' && end != std::string::npos && place[end] == ']')
    {
      i = end;
      continue;
    }
    kept += place[i];
  }
  return kept;
}

} // namespace tool
