// SPDX-License-Identifier: Apache-2.0
#include "output/excerpt.hpp"

#include "output/finding.hpp"

#include <QString>
#include <QVector>

#include <algorithm>
#include <array>
#include <iomanip>

namespace tool
{
namespace
{
// In columns, of which each character counts as one at least: else there is no end to those that
// take none.
constexpr std::size_t mostBefore = 40;
constexpr std::size_t most = 100;
constexpr std::size_t mostBytesOfCharacter = 4;

/// A character as a terminal shows it.
struct Cell
{
  std::string text;
  std::size_t columns;

  std::size_t cost() const { return std::max<std::size_t>(columns, 1); }
};
using Cells = std::vector<Cell>;

/// Whether the characters of East Asia and pictures take two columns.
bool isWide(uint character)
{
  struct Characters
  {
    uint first;
    uint last;
  };
  constexpr std::array wide{
      Characters{0x1100, 0x115F},   Characters{0x2E80, 0x303E},   Characters{0x3041, 0xA4CF},
      Characters{0xA960, 0xA97F},   Characters{0xAC00, 0xD7A3},   Characters{0xF900, 0xFAFF},
      Characters{0xFE30, 0xFE6F},   Characters{0xFF01, 0xFF60},   Characters{0xFFE0, 0xFFE6},
      Characters{0x1F300, 0x1F64F}, Characters{0x1F680, 0x1F6FF}, Characters{0x1F900, 0x1F9FF},
      Characters{0x20000, 0x3FFFD}};
  return std::any_of(wide.begin(), wide.end(),
                     [character](const Characters& some)
                     { return some.first <= character && character <= some.last; });
}

Cell cellOf(uint character)
{
  switch (QChar::category(character))
  {
  case QChar::Other_Control:
  case QChar::Other_Format: // also those that turn the direction of writing
  case QChar::Other_Surrogate:
  case QChar::Other_PrivateUse:
  case QChar::Other_NotAssigned:
  case QChar::Separator_Line:
  case QChar::Separator_Paragraph: {
    const QString code = QString("<U+%1>").arg(character, 4, 16, QLatin1Char('0')).toUpper();
    return character == '\t' ? Cell{"    ", 4}
                             : Cell{code.toStdString(), static_cast<std::size_t>(code.size())};
  }
  case QChar::Mark_NonSpacing:
  case QChar::Mark_Enclosing:
    return {QString::fromUcs4(&character, 1).toStdString(), 0};
  default:
    return {QString::fromUcs4(&character, 1).toStdString(), isWide(character) ? 2U : 1U};
  }
}

Cells cellsOf(std::string_view text)
{
  Cells cells;
  // Behind another character, since a byte order mark at the beginning would be dropped.
  const std::string content = '|' + std::string(text);
  for (const uint character : QString::fromStdString(content).mid(1).toUcs4())
  {
    cells.push_back(cellOf(character));
  }
  return cells;
}

std::size_t columnsOf(const Cells& cells)
{
  std::size_t columns = 0;
  for (const Cell& cell : cells)
  {
    columns += cell.columns;
  }
  return columns;
}

const Cell ellipsis{"\xE2\x80\xA6", 1};

/// Those from the beginning that fit into so many columns, and what says that there are more.
Cells fitting(const Cells& cells, std::size_t columns)
{
  Cells some;
  for (const Cell& cell : cells)
  {
    if (cell.cost() > columns)
    {
      some.push_back(ellipsis);
      break;
    }
    columns -= cell.cost();
    some.push_back(cell);
  }
  return some;
}

/// The bytes of a line in front of a place, as far as they can be of interest.
std::string_view lineBefore(std::string_view text, std::size_t place)
{
  const std::size_t earliest = place - std::min(place, (mostBefore + 1) * mostBytesOfCharacter);
  std::string_view before = text.substr(earliest, place - earliest);
  const std::size_t lineEnd = before.find_last_of("\r\n");
  before.remove_prefix(lineEnd == std::string_view::npos ? 0 : lineEnd + 1);
  while (!before.empty() && (static_cast<unsigned char>(before.front()) & 0xC0U) == 0x80U)
  {
    before.remove_prefix(1);
  }
  const std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (before.data() == text.data() && before.substr(0, 3) == byteOrderMark)
  {
    before.remove_prefix(3);
  }
  return before;
}

/// The same of a text behind a place, up to the end of its first line.
std::string_view firstLine(std::string_view text)
{
  return text.substr(0, std::min(text.find_first_of("\r\n"), (most + 1) * mostBytesOfCharacter));
}

void print(std::ostream& out, const Cells& cells)
{
  for (const Cell& cell : cells)
  {
    out << cell.text;
  }
}
} // namespace

void printExcerpt(std::ostream& out, const CheckedFile& file, const vesk::check::Finding& finding,
                  bool isColored)
{
  const std::string_view text = file.text();
  if (!hasExactPlace(finding) || finding.begin.offset > text.size())
  {
    return;
  }
  Cells before = cellsOf(lineBefore(text, finding.begin.offset));
  std::reverse(before.begin(), before.end());
  before = fitting(before, mostBefore);
  std::reverse(before.begin(), before.end());
  const std::string_view found = firstLine(file.text(finding));
  const Cells marked = cellsOf(found);
  Cells line = marked;
  const Cells behind = cellsOf(firstLine(text.substr(finding.begin.offset + found.size())));
  line.insert(line.end(), behind.begin(), behind.end());
  line = fitting(line, most - columnsOf(before));
  const std::size_t columns =
      columnsOf({line.begin(),
                 line.begin() + static_cast<std::ptrdiff_t>(std::min(line.size(), marked.size()))});

  out << std::setw(5) << finding.begin.line << " | ";
  print(out, before);
  print(out, line);
  out << "\n      | " << std::string(columnsOf(before), ' ')
      << (isColored ? colorOf(finding.severity) : "") << '^'
      << std::string(std::max<std::size_t>(columns, 1) - 1, '~') << (isColored ? "\x1b[0m" : "")
      << '\n';
  if (finding.mend)
  {
    out << "      = " << finding.mend->title << '\n';
  }
}

} // namespace tool
