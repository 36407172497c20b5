// SPDX-License-Identifier: Apache-2.0
// How findings are written, whatever they hold. What each format looks like is in golden/tool.
#include "support.hpp"

#include <check/manifestcheck.hpp>
#include <source/document.hpp>
#include <tools/veskpackage/files/replacing.hpp>
#include <tools/veskpackage/output/excerpt.hpp>
#include <tools/veskpackage/output/findingwriter.hpp>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <random>
#include <regex>
#include <sys/stat.h>

namespace check = vesk::check;
namespace source = vesk::source;

namespace
{
struct Shown
{
  std::string text;
  std::string shown;
  std::size_t columns;
};

// Those that nothing is in front of in one cell; marks stand on what is before them.
const std::vector<Shown> pieces{{"a", "a", 1},
                                {"\"", "\"", 1},
                                {" ", " ", 1},
                                {"\t", "    ", 4},
                                {"\u00e9", "\u00e9", 1},
                                {"e\u0301", "e\u0301", 1},
                                {"\u4e16", "\u4e16", 2},
                                {"\U0001F600", "\U0001F600", 2},
                                {"\x1b", "<U+001B>", 8},
                                {"\u200b", "<U+200B>", 8},
                                {"\ufeff", "<U+FEFF>", 8},
                                {"\u0085", "<U+0085>", 8}};

Shown joined(std::mt19937& random, std::size_t count)
{
  Shown all{"", "", 0};
  for (; count > 0; --count)
  {
    const Shown& piece = pieces[random() % pieces.size()];
    all.text += piece.text;
    all.shown += piece.shown;
    all.columns += piece.columns;
  }
  return all;
}

std::size_t columnsOf(const std::string& shown)
{
  std::size_t columns = 0;
  for (const uint c : QString::fromStdString(shown).toUcs4())
  {
    columns += c == 0x301 ? 0 : c == 0x4e16 || c == 0x1F600 ? 2 : 1;
  }
  return columns;
}

/// The part of a line that takes so many columns from one on; none where that cuts a character.
std::optional<std::string> columnsIn(const std::string& line, std::size_t from, std::size_t count)
{
  std::string part;
  std::size_t column = 0;
  for (const uint c : QString::fromStdString(line).toUcs4())
  {
    const std::string character = QString::fromUcs4(&c, 1).toStdString();
    const bool isOn = c == 0x301 && column > from && column <= from + count;
    if (isOn || (c != 0x301 && column >= from && column < from + count))
    {
      part += character;
    }
    column += columnsOf(character);
  }
  return columnsOf(part) == count ? std::make_optional(part) : std::nullopt;
}

std::string without(std::string text, const std::string& end, bool isAtEnd)
{
  const std::size_t place = isAtEnd ? text.size() - std::min(text.size(), end.size()) : 0;
  return text.compare(place, end.size(), end) == 0 ? text.erase(place, end.size()) : text;
}

const check::Rule& someRule() { return check::rules().front(); }

check::Finding findingAt(const std::string& text, std::size_t begin, std::size_t end)
{
  const source::Lines lines(text);
  const auto positionOf = [&lines](std::size_t offset) -> check::Position
  {
    const source::Place place = lines.placeOf(offset);
    return {place.line, place.column, place.utf16Column, offset};
  };
  return {&someRule(), check::Severity::Warning, "m", positionOf(begin), positionOf(end), "/p"};
}

std::string writtenAs(const char* format, const tool::CheckedFile& file)
{
  std::ostringstream out;
  const auto writer = tool::findingWriter(format, {});
  writer->begin(out);
  writer->write(file, out);
  writer->end(out);
  return out.str();
}

/// The fingerprints of what is found in a text.
std::vector<std::string> fingerprintsOf(const std::string& text)
{
  tool::CheckedFile file;
  file.name = "a.xml";
  file.bytes = text;
  file.findings = check::checkText(text);
  std::vector<std::string> fingerprints;
  const nlohmann::json report = nlohmann::json::parse(writtenAs("sarif", file));
  for (const auto& result : report["runs"][0]["results"])
  {
    fingerprints.push_back(result["partialFingerprints"]["finding/v1"]);
  }
  return fingerprints;
}
} // namespace

// Whatever is cut off a long line, what stands above the mark is what was found.
TEST(Excerpt, MarksWhatWasFound)
{
  const std::string more = "\u2026";
  std::mt19937 random(1);
  for (int i = 0; i < 3000; ++i)
  {
    const std::size_t longest = i % 3 == 0 ? 200 : 15;
    const Shown before = joined(random, random() % longest);
    const Shown found = joined(random, random() % longest);
    const Shown behind = joined(random, random() % longest);
    const char* const lineEnd = std::array{"\n", "\r\n", "\r"}[random() % 3];
    tool::CheckedFile file;
    file.bytes = lineEnd + before.text;
    const std::size_t begin = file.bytes.size();
    const bool isOfSeveralLines = random() % 4 == 0;
    file.bytes += found.text + (isOfSeveralLines ? lineEnd : "") + behind.text;
    const std::size_t end = begin + found.text.size() + (isOfSeveralLines ? 2 : 0);
    std::ostringstream out;
    tool::printExcerpt(out, file, findingAt(file.bytes, begin, std::min(end, file.bytes.size())),
                       false);
    std::smatch parts;
    const std::string printed = out.str();
    ASSERT_TRUE(std::regex_match(printed, parts,
                                 std::regex("    2 \\| ([^\r\n]*)\n      \\| ( *)(\\^~*)\n")))
        << printed;
    const std::string line = parts[1];
    const auto blanks = static_cast<std::size_t>(parts[2].length());
    const auto marks = static_cast<std::size_t>(parts[3].length());
    const std::string rest = isOfSeveralLines ? "" : behind.shown;
    ASSERT_LE(columnsOf(line), 101U) << printed;
    if (before.columns <= 20 && before.columns + found.columns + columnsOf(rest) <= 50 &&
        longest == 15)
    {
      ASSERT_EQ(line, before.shown + found.shown + rest);
      ASSERT_EQ(blanks, before.columns);
      ASSERT_EQ(marks, std::max<std::size_t>(found.columns, 1));
      continue;
    }
    const std::optional<std::string> left = columnsIn(line, 0, blanks);
    ASSERT_TRUE(left) << printed;
    const std::string front = without(*left, more, false);
    ASSERT_EQ(front, before.shown.substr(before.shown.size() - front.size())) << printed;
    if (found.columns > 0)
    {
      const std::optional<std::string> marked = columnsIn(line, blanks, marks);
      ASSERT_TRUE(marked) << printed;
      const std::string kept = without(*marked, more, true);
      ASSERT_EQ(kept, found.shown.substr(0, kept.size())) << printed;
      ASSERT_TRUE(kept == found.shown || columnsOf(line) > 80) << printed;
    }
  }
}

// Read back, each text is what it was, and there is a command a line.
TEST(FindingFormats, EscapeWhatWouldEndATextWithinThem)
{
  const std::vector<std::string> texts{
      "a",    "\n",  "\r\n", "%", "%0A", ":",    ",",    "::",     "\"",     "<",          ">", "&",
      "&lt;", "]]>", "\t",   "'", "\1",  "\x1b", "\x7f", "\u2028", "\ufffe", "\U0001F600", " "};
  std::mt19937 random(1);
  for (int i = 0; i < 500; ++i)
  {
    const auto text = [&]
    {
      std::string all = "x";
      for (std::size_t count = random() % 6; count > 0; --count)
      {
        all += texts[random() % texts.size()];
      }
      return all;
    };
    tool::CheckedFile file;
    file.name = text();
    file.code = tool::NegativeResult;
    file.findings.push_back(findingAt("a", 0, 1));
    file.findings.back().message = text();
    const std::string& message = file.findings.back().message;

    std::string command = writtenAs("github", file);
    ASSERT_EQ(std::count(command.begin(), command.end(), '\n'), 1) << command;
    ASSERT_EQ(command.find('\r'), std::string::npos) << command;
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(command, parts,
                                 std::regex("::warning file=([^,:]*),line=1,endLine=1,col=1,"
                                            "endColumn=2,title=[a-z-]*::(.*) \\(/p\\)\n")))
        << command;
    const auto decoded = [](const std::string& escaped)
    { return QByteArray::fromPercentEncoding(QByteArray::fromStdString(escaped)).toStdString(); };
    ASSERT_EQ(decoded(parts[1]), file.name);
    ASSERT_EQ(decoded(parts[2]), message);

    const auto document =
        source::Document::parseText(writtenAs("junit", file), source::BlankTexts::LeftOut);
    ASSERT_FALSE(document.error()) << document.text();
    const source::Node& suite = *document.root()->firstChild();
    const auto inXml = [](std::string kept)
    {
      for (const char* const character : {"\1", "\x1b", "\ufffe"})
      {
        kept = QString::fromStdString(kept).replace(character, "\ufffd").toStdString();
      }
      return kept;
    };
    // In an attribute a line end is read as a blank.
    const auto inAttribute = [&inXml](const std::string& kept)
    { return QString::fromStdString(inXml(kept)).replace('\n', ' ').toStdString(); };
    ASSERT_EQ(suite.attribute("name")->value(), inAttribute(file.name));
    const source::Node& test = *suite.firstChild();
    ASSERT_EQ(test.firstChild()->attribute("message")->value(), inAttribute(message));
    const std::string shown(test.firstChild()->firstChild()->value());
    ASSERT_THAT(shown, testing::HasSubstr(inXml(message) + " ["));
  }
}

TEST(Fingerprints, StayWhereTheFileHasChangedElsewhere)
{
  std::size_t found = 0;
  for (const QFileInfo& info : QDir(GOLDEN_FILES "/check").entryInfoList({"*.xml"}))
  {
    const std::string text = contentOf(info.filePath().toStdString());
    const source::Document document = source::Document::parse(text);
    if (document.error() || !document.encoding().isUtf8() || document.root() == nullptr)
    {
      continue;
    }
    const std::vector<std::string> before = fingerprintsOf(text);
    std::set<std::string> different(before.begin(), before.end());
    EXPECT_EQ(different.size(), before.size()) << info.fileName().toStdString();
    for (const source::Node& child : document.root()->children())
    {
      std::string changed = text;
      changed.insert(child.range().begin, "\n\n<!-- one\n more -->\r\n  ");
      EXPECT_EQ(fingerprintsOf(changed), before) << info.fileName().toStdString();
    }
    found += before.size();
  }
  EXPECT_GT(found, 50U);
  // Entries in front of others, which get other numbers by that.
  const std::string list = "<package uuid='u' version='1'><names>";
  const std::string faulty = "<name lang='1'>a</name><name lang='2'>b</name></names></package>";
  EXPECT_EQ(fingerprintsOf(list + faulty),
            fingerprintsOf(list + "<name lang='en'>c</name>\n" + faulty));
}

TEST(GrowingFile, IsWholeOrNotThere)
{
  const TemporaryFolder folder;
  const auto entries = [&folder]
  {
    return QDir(QString::fromStdString(folder.path("")))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
        .join(' ')
        .toStdString();
  };
  const std::string large(3000000, 'x');
  for (const bool isThere : {false, true})
  {
    const std::string file = folder.path("file");
    if (isThere)
    {
      folder.file("file", "old");
      chmod(file.c_str(), 0640);
      std::filesystem::create_symlink("file", folder.path("link"));
    }
    const std::string before = entries();
    const auto expectAsBefore = [&]
    {
      EXPECT_EQ(entries(), before);
      EXPECT_EQ(isThere ? contentOf(file) : "old", "old");
    };
    {
      tool::GrowingFile given(file);
      given.append(large);
      EXPECT_EQ(isThere ? contentOf(file) : "old", "old");
    }
    expectAsBefore();
    EXPECT_EQ(tool::replaceFile(file, large, [] { return "no"; }), "no");
    expectAsBefore();
    EXPECT_EQ(tool::replaceFile(isThere ? folder.path("link") : file, large), "");
    EXPECT_EQ(contentOf(file), large);
    if (isThere)
    {
      struct stat status = {};
      stat(file.c_str(), &status);
      EXPECT_EQ(status.st_mode & 07777U, 0640U);
      EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
      EXPECT_EQ(entries(), before);
    }
    std::filesystem::remove(file);
  }
  tool::GrowingFile full("/dev/full");
  full.append("a");
  full.append("b");
  EXPECT_THAT(full.finish(), testing::StartsWith("Could not write: "));
  EXPECT_THAT(tool::replaceFile(folder.path("none/file"), "a"),
              testing::StartsWith("Could not write: "));
}
