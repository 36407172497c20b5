// SPDX-License-Identifier: Apache-2.0
// Whether the scanner knows where it is, beside what the parser itself finds in the same text.
#include <package/xml/limits.hpp>
#include <package/xml/markupscanner.hpp>
#include <package/xml/saxapi.hpp>

#include <gtest/gtest.h>

#include <random>

namespace
{
/// Finds how many elements are open at an element "end", and how many prefixes they declare.
class PlaceHandler : public QXmlDefaultHandler
{
public:
  bool startElement(const QString&, const QString&, const QString& name,
                    const QXmlAttributes& attributes) override
  {
    isAtEnd = name == QLatin1String("end");
    prefixes.push_back(prefixes.back());
    for (int i = 0; i < attributes.count(); ++i)
    {
      prefixes.back() += attributes.qName(i).startsWith("xmlns:") ? 1 : 0;
    }
    return !isAtEnd;
  }
  bool endElement(const QString&, const QString&, const QString&) override
  {
    prefixes.pop_back();
    return true;
  }

  bool isAtEnd = false;
  std::vector<int> prefixes{0}; // of all elements up to each that is open
};

/// Where the scanner refuses a text that it gets in pieces; -1 where it does not.
int refusedAt(const QString& text, int firstCut, int secondCut)
{
  vesk::MarkupScanner scanner(vesk::Namespaces::Processed);
  const int cuts[] = {0, std::min(firstCut, secondCut), std::max(firstCut, secondCut), text.size()};
  for (int i = 0; i < 3; ++i)
  {
    const int at = scanner.scan(text.mid(cuts[i], cuts[i + 1] - cuts[i]));
    if (at >= 0)
    {
      return cuts[i] + at;
    }
  }
  return -1;
}

/// A random text that is well-formed now and then: what begins markup and what ends it, with up to
/// three of what may confuse between them.
QString randomText(std::mt19937& random)
{
  const auto oneOf = [&random](const auto& texts) { return texts[random() % std::size(texts)]; };
  static const std::pair<const char*, const char*> outer[] = {
      {"<a", ">"},     {"<a", "/>"},         {"<a b='", "'>"}, {"<a xmlns:c=\"", "\"/>"},
      {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?p ", "?>"},   {"</a", ">"},
      {"", ""}};
  static const char* const inner[] = {"<",           "</a>",
                                      "<a>",         "/",
                                      ">",           "'",
                                      "\"",          "-",
                                      "]",           "?",
                                      "!",           ":",
                                      " ",           "t",
                                      "<!--",        "-->",
                                      "]]>",         "?>",
                                      " b='",        " xmlns:c='u'",
                                      "xmlns:d='u'", " axmlns:e='u'",
                                      " xmlns='u'",  " xmlns:f = \"u\""};
  QString text = "<r>";
  for (std::size_t left = random() % 5; left > 0; --left)
  {
    const auto& [begin, end] = oneOf(outer);
    text += begin;
    for (std::size_t within = random() % 4; within > 0; --within)
    {
      text += oneOf(inner);
    }
    text += end;
  }
  return text;
}
} // namespace

TEST(MarkupScanner, IsNotLostInWhatTheParserReads)
{
  std::mt19937 random(1); // NOLINT(cert-msc51-cpp): always the same texts
  int wellFormed = 0;
  for (int i = 0; i < 50000; ++i)
  {
    const QString text = randomText(random);
    QXmlInputSource source;
    source.setData(text + "<end>");
    QXmlSimpleReader reader;
    reader.setFeature("http://xml.org/sax/features/namespaces", false);
    reader.setFeature("http://xml.org/sax/features/namespace-prefixes", true);
    PlaceHandler place;
    reader.setContentHandler(&place);
    reader.parse(source);
    if (!place.isAtEnd)
    {
      continue;
    }
    ++wellFormed;
    const int depth = static_cast<int>(place.prefixes.size()) - 2;
    const int prefixes = place.prefixes.back();
    const auto cut = [&]
    { return static_cast<int>(random() % (static_cast<unsigned>(text.size()) + 12)); };
    EXPECT_EQ(refusedAt(text + QString("<a>").repeated(257), cut(), cut()),
              text.size() + (256 - depth) * 3 + 1)
        << text.toStdString();
    EXPECT_EQ(refusedAt(text + "<a" + QString(" xmlns:c='u'").repeated(33), cut(), cut()),
              text.size() + 2 + (32 - prefixes) * 12 + 6)
        << text.toStdString();
  }
  EXPECT_GT(wellFormed, 5000);
}
