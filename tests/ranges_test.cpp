// SPDX-License-Identifier: Apache-2.0
// Where findings say that faults are, beside the tree of the text and a plain count.
#include "findings.hpp"

#include <source/document.hpp>
#include <source/encoding.hpp>

#include <QRegularExpression>

#include <set>
#include <tuple>

using namespace vesk::check;
using vesk::source::Document;

namespace
{
/// The position of an offset by the text in front of it.
Position counted(const std::string& text, std::size_t offset)
{
  const std::size_t begin =
      text.compare(0, byteOrderMark.size(), byteOrderMark) == 0 ? byteOrderMark.size() : 0;
  const QString before = QString::fromStdString(text.substr(begin, offset - begin));
  const QStringList lines = before.split(QRegularExpression("\r\n|\r|\n"));
  return {lines.size(), lines.back().toUcs4().size() + 1, lines.back().size() + 1, offset};
}

auto asTuple(const Position& position)
{
  return std::make_tuple(position.line, position.column, position.utf16Column, position.offset);
}

/// The element at a path, or that with the attribute or in front of a node that is none; null where
/// names are cut, and so on.
const vesk::source::Node* elementAt(const Document& document, const std::string& place)
{
  const vesk::source::Node* element = nullptr;
  for (const QString& step : QString::fromStdString(place).mid(1).split('/'))
  {
    if (step.startsWith('@') || step.contains('('))
    {
      break;
    }
    const std::string name = step.section('[', 0, 0).toStdString();
    int left = std::max(1, step.section('[', 1).chopped(step.endsWith(']') ? 1 : 0).toInt());
    const vesk::source::Node* found = nullptr;
    for (const vesk::source::Node& child :
         element == nullptr ? document.nodes() : element->children())
    {
      left -= child.isElement(name) ? 1 : 0;
      found = found == nullptr && left == 0 ? &child : found;
    }
    if (found == nullptr)
    {
      return nullptr;
    }
    element = found;
  }
  return element;
}

/// What a finding's range may hold, to judge by the finding's place: an attribute's name, or its value
/// with quotes or without; the name, the text or
/// all of an element, or a node in it.
std::vector<std::string> expectedIn(const Document& document, const std::string& place)
{
  const vesk::source::Node* const element = elementAt(document, place);
  const auto text = [&document](vesk::source::Range range)
  { return std::string(document.text(range)); };
  if (element == nullptr)
  {
    return {};
  }
  const std::string name(element->name());
  const std::size_t at = place.find('@');
  if (at != std::string::npos)
  {
    const auto* const attribute = element->attribute(place.substr(at + 1));
    return attribute == nullptr ? std::vector<std::string>{name}
           : attribute->valueRange().size() == 0
               ? std::vector<std::string>{text(attribute->nameRange()), text(attribute->range())}
               : std::vector<std::string>{text(attribute->nameRange()),
                                          text(attribute->valueRange())};
  }
  const std::string content = text({element->startTag().end, element->endTag().begin});
  std::vector<std::string> parts{name, text(element->range()),
                                 QString::fromStdString(content).trimmed().toStdString()};
  for (const vesk::source::Node& child : element->children())
  {
    parts.push_back(text(child.range())); // what does not belong there
  }
  return parts;
}

/// The rules about names of attributes and of elements.
bool isAboutName(const std::string& tag)
{
  return std::set<std::string>{"unknown-attribute",   "unknown-element",
                               "misplaced-element",   "unsupported-permission",
                               "repeated-permission", "repeated-section",
                               "root-name",           "unusual-name",
                               "repeated-element"}
             .count(tag) == 1;
}

std::string lastName(const std::string& place)
{
  const std::string last = place.substr(place.find_last_of('/') + 1);
  return last.substr(last.front() == '@' ? 1 : 0, last.find('[') - (last.front() == '@' ? 1 : 0));
}

/// Checks all places, and gives the findings one in a line, with columns or without.
std::string expectInPlace(const std::string& bytes, bool hasColumns)
{
  const Document document = Document::parse(bytes);
  const std::string text(document.text());
  std::ostringstream shown;
  const std::vector<Finding> findings = checkBytes(bytes, everything()).findings;
  std::pair<int, int> last;
  for (const Finding& finding : findings)
  {
    const std::string what = finding.rule->tag + (' ' + finding.place);
    // Of a line end within a value, messages show as many blanks as it has bytes.
    const std::string message = QString::fromStdString(finding.message).simplified().toStdString();
    const std::pair<int, int> begin{finding.begin.line, finding.begin.utf16Column};
    EXPECT_LE(last, begin) << what;
    last = begin;
    if (finding.begin.offset == 0 && finding.end.offset == 0)
    {
      shown << what << ' ' << message << '\n';
      continue; // in a text that an entity brings
    }
    EXPECT_LE(finding.begin.offset, finding.end.offset) << what;
    EXPECT_LE(finding.end.offset, text.size()) << what;
    for (const Position& position : {finding.begin, finding.end})
    {
      EXPECT_EQ(asTuple(position), asTuple(counted(text, position.offset))) << what;
    }
    const std::string in =
        text.substr(finding.begin.offset, finding.end.offset - finding.begin.offset);
    const std::vector<std::string> expected = expectedIn(document, finding.place);
    if (isAboutName(finding.rule->tag) && finding.place.find("\xE2\x80\xA6") == std::string::npos)
    {
      EXPECT_EQ(in, lastName(finding.place)) << what;
    }
    else if (finding.rule->tag == std::string("not-kept"))
    {
      EXPECT_TRUE(in.front() == '<' || finding.place.find('@') != std::string::npos) << what;
    }
    else if (!expected.empty() && finding.place.find('(') == std::string::npos)
    {
      EXPECT_THAT(expected, testing::Contains(in)) << what;
    }
    shown << what << ' ' << message;
    if (hasColumns)
    {
      shown << ' ' << finding.begin.line << ':' << finding.begin.column << '-' << finding.end.line
            << ':' << finding.end.column;
    }
    shown << '\n';
  }
  return shown.str();
}

std::string withLineEnds(const std::string& text, const char* end)
{
  return QString::fromStdString(text).replace("\r\n", "\n").replace('\n', end).toStdString();
}
} // namespace

// The same is found in the same places however a manifest is encoded and its lines end.
TEST(Ranges, HoldWhatFindingsAreAbout)
{
  std::size_t count = 0;
  for (const std::string& path : goldenManifests())
  {
    SCOPED_TRACE(path);
    const std::string bytes = contentOf(path + ".xml");
    const Document document = Document::parse(bytes);
    if (document.error() || !document.encoding().isUtf8())
    {
      continue;
    }
    ++count;
    const std::string text = bytes.substr(document.encoding().hasMark ? byteOrderMark.size() : 0);
    const std::string found = expectInPlace(text, true);
    EXPECT_EQ(expectInPlace(byteOrderMark + text, true), found);
    EXPECT_EQ(expectInPlace(withLineEnds(text, "\r\n"), true), found);
    EXPECT_EQ(expectInPlace(withLineEnds(text, "\r"), true), found);
    for (const char* const encoding : {"UTF-16LE", "UTF-16BE"})
    {
      const QString declared = QString::fromStdString(text).replace(
          QRegularExpression("^(<[?]xml[^>]*encoding=.)utf-8",
                             QRegularExpression::CaseInsensitiveOption),
          "\\1UTF-16");
      const std::string wide =
          vesk::source::encode(byteOrderMark + declared.toStdString(), {encoding, true});
      EXPECT_EQ(expectInPlace(wide, true), found);
    }
    EXPECT_EQ(expectInPlace(withLineEnds(text, " "), false), expectInPlace(text, false));
  }
  EXPECT_GT(count, 10U);
}
