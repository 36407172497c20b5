// SPDX-License-Identifier: Apache-2.0
// Whether the scanner knows where it is, beside what the parser itself finds in the same text.
#include <package/xml/markupscanner.hpp>
#include <package/xml/saxapi.hpp>
#include <source/limits.hpp>

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

/// Where the scanner refuses a text that it gets in three pieces.
int refusedAt(const QString& text, int firstCut, int secondCut)
{
  vesk::MarkupScanner scanner(vesk::Namespaces::Processed);
  int begin = 0;
  for (const int end : {std::min(firstCut, secondCut), std::max(firstCut, secondCut), text.size()})
  {
    const int at = scanner.scan(text.mid(begin, end - begin));
    if (at >= 0)
    {
      return begin + at;
    }
    begin = end;
  }
  return -1;
}

/// A random text that is well-formed now and then: what begins markup and what ends it, with up to
/// four of what may confuse between them.
QString randomText(std::mt19937& random)
{
  static const QStringList outer =
      QString(R"(<a|>,<a|/>,<a b='|'>,<a xmlns:c="|"/>,<!--|-->,<![CDATA[|]]>,<?p |?>,</a|>,|)")
          .split(',');
  static const QStringList inner =
      QString(
          R"(<,</a>,<a>,/,>,',",-,-t,-t-t,],]t,?,?t,!,:,t,<!--,-->,]]>,?>, b=', xmlns:c='u',xmlns:d='u',)"
          R"( axmlns:e='u', xmlns='u', xmlns:f = "u")")
          .split(',');
  const auto oneOf = [&random](const QStringList& all)
  { return all[static_cast<int>(random() % static_cast<unsigned>(all.size()))]; };
  QString text = "<r>";
  for (std::size_t left = random() % 5; left > 0; --left)
  {
    const QStringList ends = oneOf(outer).split('|');
    text += ends[0];
    for (std::size_t within = random() % 5; within > 0; --within)
    {
      text += oneOf(inner);
    }
    text += ends[1];
  }
  return text;
}
} // namespace

TEST(MarkupScanner, IsNotLostInWhatTheParserReads)
{
  std::mt19937 random(1); // NOLINT(cert-msc51-cpp): always the same texts
  QXmlSimpleReader reader;
  reader.setFeature("http://xml.org/sax/features/namespaces", false);
  reader.setFeature("http://xml.org/sax/features/namespace-prefixes", true);
  int wellFormed = 0;
  for (int i = 0; i < 30000; ++i)
  {
    const QString text = randomText(random);
    QXmlInputSource source;
    source.setData(text + "<end>");
    PlaceHandler place;
    reader.setContentHandler(&place);
    reader.parse(source);
    if (!place.isAtEnd)
    {
      continue;
    }
    ++wellFormed;
    vesk::MarkupScanner scanner(vesk::Namespaces::Processed);
    EXPECT_EQ(scanner.scan("<?a?><!--b-->"), -1);
    EXPECT_TRUE(scanner.isInProlog());
    EXPECT_EQ(scanner.scan(text), -1);
    EXPECT_FALSE(scanner.isInProlog());
    const int size = text.size();
    const auto cut = [&] { return static_cast<int>(random() % 1000) * (size + 12) / 1000; };
    EXPECT_EQ(refusedAt(text + QString("<a>").repeated(257), cut(), cut()),
              size + (258 - static_cast<int>(place.prefixes.size())) * 3 + 1)
        << text.toStdString();
    EXPECT_EQ(refusedAt(text + "<a" + QString(" xmlns:c='u'").repeated(33), cut(), cut()),
              size + 2 + (32 - place.prefixes.back()) * 12 + 6)
        << text.toStdString();
  }
  EXPECT_GT(wellFormed, 5000);
}
