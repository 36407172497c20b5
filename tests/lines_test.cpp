// SPDX-License-Identifier: Apache-2.0
// Lines of random texts beside those that a text has when it is split at its line ends.
#include "support.hpp"

#include <source/lines.hpp>

#include <QRegularExpression>

#include <random>

using vesk::source::Lines;
using vesk::source::Place;

namespace
{
/// Of blocks of several kinds: all ASCII, or with characters of up to four bytes; with long lines and
/// short ones.
std::string randomText(std::mt19937& random)
{
  const std::vector<std::string> pieces{
      "a",           "bc \t", "\n", "\r", "\r\n", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
      "\xEF\xBB\xBF"};
  const std::size_t kinds = random() % 3 == 0 ? 5 : pieces.size();
  const std::size_t shortest = random() % 2 == 0 ? 0 : 200;
  std::string text;
  for (auto left = random() % 2000; left > 0; --left)
  {
    const std::string& piece = pieces[random() % kinds];
    const bool isEnd = piece.find_first_of("\r\n") != std::string::npos;
    text += isEnd && random() % (shortest + 1) != 0 ? "x" : piece;
  }
  return text;
}

void expectPlace(const Lines& lines, std::size_t offset, const Place& expected)
{
  const Place place = lines.placeOf(offset);
  EXPECT_EQ(std::tie(place.line, place.column, place.utf16Column),
            std::tie(expected.line, expected.column, expected.utf16Column))
      << offset;
}

/// \p mark is so many bytes long.
void expectLines(const std::string& text, std::size_t mark)
{
  const Lines lines(text);
  const QString plain = QString::fromStdString('x' + text.substr(mark)).mid(1); // any mark is kept
  const QStringList split = plain.split(QRegularExpression("\r\n|\r|\n"));
  ASSERT_EQ(lines.count(), split.size());
  std::size_t offset = mark;
  Place place;
  for (const QString& line : split)
  {
    EXPECT_EQ(lines.beginOf(place.line), offset);
    EXPECT_EQ(lines.line(place.line), line.toStdString());
    place.column = place.utf16Column = 1;
    for (const uint character : line.toUcs4())
    {
      expectPlace(lines, offset, place);
      offset += character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
      ++place.column;
      place.utf16Column += character > 0xFFFF ? 2 : 1;
    }
    expectPlace(lines, offset, place);
    offset += text.substr(offset, 2) == "\r\n" ? 2 : 1;
    ++place.line;
  }
  EXPECT_EQ(offset, text.size() + 1);
  EXPECT_EQ(lines.beginOf(0), text.size());
  EXPECT_EQ(lines.beginOf(place.line), text.size());
  EXPECT_EQ(lines.line(0), "");
  EXPECT_EQ(lines.line(place.line), "");
}
} // namespace

TEST(Lines, AreThoseOfASplitText)
{
  const std::string mark = "\xEF\xBB\xBF";
  std::mt19937 random(7);
  for (int i = 0; i < 40 && !testing::Test::HasFailure(); ++i)
  {
    const std::string text = randomText(random);
    expectLines(mark + text, mark.size());
    expectLines('.' + text, 0);
  }
  for (const char* const text : {"", "\n", "\r", "\r\n", "\n\r", "a\r"})
  {
    expectLines(text, 0);
    expectLines(mark + text, mark.size());
  }
}
