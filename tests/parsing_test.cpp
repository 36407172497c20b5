// SPDX-License-Identifier: Apache-2.0
// The parse within the limits is the toolkit's own: same verdict, tree, message and place.
#include "support.hpp"

#include <package/xml/parsing.hpp>

#include <QBuffer>
#include <QDomDocument>
#include <QTextCodec>

#include <random>

using vesk::parseXml;
using vesk::SyntaxError;

namespace
{
/// Everything about a node and what is below it.
void describe(const QDomNode& node, QString& out)
{
  out += QStringLiteral("%1 %2 {%3} [%4] %5:%6\n")
             .arg(node.nodeType())
             .arg(node.nodeName(), node.nodeValue(), node.namespaceURI())
             .arg(node.lineNumber())
             .arg(node.columnNumber());
  QStringList attributes;
  const QDomNamedNodeMap map = node.attributes();
  for (int i = 0; i < map.count(); ++i)
  {
    attributes += map.item(i).nodeName() + '=' + map.item(i).nodeValue() + '{' +
                  map.item(i).namespaceURI() + '}';
  }
  attributes.sort();
  out += attributes.join(',');
  for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
  {
    describe(child, out);
  }
  out += ")\n";
}

std::string result(bool parsed, const QDomDocument& document, const SyntaxError& error)
{
  QString out;
  if (parsed)
  {
    describe(document, out);
  }
  else
  {
    out = QStringLiteral("%1:%2 %3").arg(error.line).arg(error.column).arg(error.message);
  }
  return out.toStdString();
}

void expectSameAsToolkit(const QByteArray& bytes)
{
  QBuffer device;
  device.setData(bytes);
  QDomDocument ours;
  QDomDocument theirs;
  SyntaxError error;
  SyntaxError theirError;
  device.open(QIODevice::ReadOnly);
  bool parsed = parseXml(device, ours, error);
  device.seek(0);
  bool theyParsed =
      theirs.setContent(&device, &theirError.message, &theirError.line, &theirError.column);
  ASSERT_EQ(result(parsed, ours, error), result(theyParsed, theirs, theirError))
      << bytes.toStdString();

  const QString text = QString::fromUtf8(bytes.constData());
  parsed = parseXml(text, ours, error);
  theyParsed =
      theirs.setContent(text, true, &theirError.message, &theirError.line, &theirError.column);
  ASSERT_EQ(result(parsed, ours, error), result(theyParsed, theirs, theirError))
      << bytes.toStdString();
}

/// A document with all that a document type can bring.
const char* const withDocumentType = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- <a> --><!DOCTYPE p SYSTEM "none.dtd" [
  <!ELEMENT p (names|(contents,(a|b)*)?)> <!ATTLIST p uuid CDATA "&e;" x ID #IMPLIED>
  <!NOTATION n SYSTEM "n"> <!ENTITY u SYSTEM "u" NDATA n> <!ENTITY x SYSTEM "file:///etc/hostname">
  <!ENTITY e "text &lt;"> <!ENTITY m "<name lang='en'>&e;</name><!-- c -->">
  <!ENTITY % p "<!ENTITY f 'from p'>"> %p; <?pi in type?> <!ENTITY q '"&#39;'>
]>
<p uuid="&e;&q;" y='&undefined;' xmlns:k="urn:k" k:z="1">
  <names>&m;&f; &undefined; &x; <name lang="fr" lang="de">]] > &#65;</name></names>
  <?pi ?data? ?><contents><![CDATA[]]]]><![CDATA[>]]><k:a k:b=">"/></contents>
</p>
<!-- end -->
)";

std::vector<QByteArray> documents()
{
  std::vector<QByteArray> all{withDocumentType};
  for (const std::string& path : exampleManifests())
  {
    all.push_back(QByteArray::fromStdString(contentOf(path)));
  }
  return all;
}
} // namespace

TEST(Parsing, GivesTheSameOfWholeDocumentsInEveryEncoding)
{
  for (const QByteArray& document : documents())
  {
    expectSameAsToolkit(document);
    for (const char* encoding : {"UTF-16", "UTF-16LE", "UTF-16BE", "UTF-32", "ISO-8859-1"})
    {
      QString text = QString::fromUtf8(document);
      text.replace("UTF-8", encoding);
      expectSameAsToolkit(QTextCodec::codecForName(encoding)->fromUnicode(text));
    }
    // The encoding is looked for in the first piece that the toolkit reads, and not behind it.
    for (const int blanks : {900, 1100, 20000})
    {
      QByteArray padded = document;
      padded.replace("encoding=\"UTF-8\"", QByteArray(blanks, ' ') + "encoding='ISO-8859-1'");
      expectSameAsToolkit(padded);
    }
  }
}

TEST(Parsing, GivesTheSameOfTruncatedDocuments)
{
  for (const QByteArray& document : documents())
  {
    const int step = document.size() < 3000 ? 1 : 7;
    for (int size = 0; size < document.size(); size += step)
    {
      ASSERT_NO_FATAL_FAILURE(expectSameAsToolkit(document.left(size)));
    }
  }
}

TEST(Parsing, GivesTheSameOfDamagedDocuments)
{
  std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same damage every time
  const QByteArray pieces[] = {"<",
                               ">",
                               "/",
                               "'",
                               "\"",
                               "&",
                               ";",
                               "<!--",
                               "-->",
                               "-",
                               "]]>",
                               "?>",
                               "<?",
                               "<![CDATA[",
                               "=",
                               "&e;",
                               "&m;",
                               "%p;",
                               "(",
                               "\xC3",
                               "\0",
                               "\xEF\xBF\xBE",
                               "\xEF\xBF\xBF",
                               "<!DOCTYPE p []>",
                               "<?xml version='1.0'?>",
                               "<a>",
                               "</a>",
                               "\xEF\xBB\xBF",
                               "%",
                               "]"};
  const auto below = [&random](int limit)
  { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  for (const QByteArray& document : documents())
  {
    for (int i = 0; i < 1500; ++i)
    {
      QByteArray damaged = document;
      for (int n = below(3); n >= 0; --n)
      {
        const int at = below(damaged.size());
        const QByteArray& piece = pieces[below(static_cast<int>(std::size(pieces)))];
        switch (below(3))
        {
        case 0:
          damaged.insert(at, piece);
          break;
        case 1:
          damaged.replace(at, 1 + below(10), piece);
          break;
        default:
          damaged.insert(at, damaged.mid(below(damaged.size()), below(40)));
        }
      }
      ASSERT_NO_FATAL_FAILURE(expectSameAsToolkit(damaged));
    }
  }
}

TEST(Parsing, NeverReadsExternalEntities)
{
  const TemporaryFolder folder;
  const std::string secret = folder.file("secret", "secret");
  QDomDocument document;
  SyntaxError error;
  ASSERT_TRUE(parseXml(
      QString::fromStdString("<!DOCTYPE p [<!ENTITY x SYSTEM 'file://" + secret + "'>]><p>&x;</p>"),
      document, error));
  EXPECT_EQ(document.documentElement().text(), "");
}

TEST(Parsing, ReadsADeviceThatGivesFewBytesAtATime)
{
  struct Dripping : QIODevice
  {
    bool isSequential() const override { return true; }
    qint64 readData(char* data, qint64 size) override
    {
      const qint64 given = rest.isEmpty() || size == 0 ? 0 : 1;
      std::copy_n(rest.constData(), given, data);
      rest.remove(0, static_cast<int>(given));
      return given;
    }
    qint64 writeData(const char*, qint64) override { return -1; }
    QByteArray rest = "<?xml version='1.0' encoding='UTF-8'?><p>\xC3\xA9\xE3\x81\x82</p>";
  } device;
  device.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  QDomDocument document;
  SyntaxError error;
  ASSERT_TRUE(parseXml(device, document, error)) << error.message.toStdString();
  EXPECT_EQ(document.documentElement().text(), QString::fromUtf8("\xC3\xA9\xE3\x81\x82"));
}
