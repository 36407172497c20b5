// SPDX-License-Identifier: Apache-2.0
// Within the limits, parsing gives the same verdict, tree, message and place as the toolkit's own
// parse. The fuzz target "file" covers damaged documents.
#include "support.hpp"

#include <package/xml/parsing.hpp>

#include <QBuffer>
#include <QTextCodec>

#include <algorithm>

using vesk::LoadError;
using vesk::parseXml;

namespace
{
/// Everything about a node and what is below it.
QString described(const QDomNode& node)
{
  QStringList attributes;
  const QDomNamedNodeMap map = node.attributes();
  for (int i = 0; i < map.count(); ++i)
  {
    attributes += described(map.item(i));
  }
  attributes.sort();
  QString out =
      QStringLiteral("%1 %2 {%3} [%4] (%5 ")
          .arg(node.nodeType())
          .arg(node.nodeName(), node.nodeValue(), node.namespaceURI(), attributes.join(','));
  if (!node.isAttr())
  {
    out += QStringLiteral("%1:%2 ").arg(node.lineNumber()).arg(node.columnNumber());
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
    {
      out += described(child);
    }
  }
  return out + ")\n";
}

/// What a parse gives, as text.
template <typename Source>
std::string parsed(Source&& source)
{
  LoadError error;
  const std::optional<QDomDocument> document = parseXml(source, error);
  return document ? described(*document).toStdString()
                  : std::to_string(error.line) + ':' + std::to_string(error.column) + ' ' +
                        error.message;
}

/// What the toolkit's own parse gives.
template <typename Source>
std::string parsedByToolkit(Source&& source, bool namespaceProcessing)
{
  QDomDocument document;
  QString message;
  int line = 0;
  int column = 0;
  const bool isParsed = document.setContent(source, namespaceProcessing, &message, &line, &column);
  return (isParsed ? described(document)
                   : QStringLiteral("%1:%2 %3").arg(line).arg(column).arg(message))
      .toStdString();
}

void expectSameAsToolkit(QByteArray bytes)
{
  QBuffer device(&bytes);
  device.open(QIODevice::ReadOnly);
  const std::string ours = parsed(device);
  device.seek(0);
  ASSERT_EQ(ours, parsedByToolkit(&device, false)) << bytes.toStdString();

  const QString text = QString::fromUtf8(bytes.constData());
  ASSERT_EQ(parsed(text), parsedByToolkit(text, true)) << bytes.toStdString();
}

/// Gives its bytes one at a time, in the middle of characters as well.
struct SlowBuffer : QBuffer
{
  using QBuffer::QBuffer;
  qint64 readData(char* data, qint64 size) override
  {
    return QBuffer::readData(data, std::min<qint64>(size, 1));
  }
};
} // namespace

TEST(Parsing, GivesTheSameOfWholeDocumentsInEveryEncoding)
{
  std::vector<std::string> paths = exampleManifests();
  paths.emplace_back(GOLDEN_FILES "/oddities.xml");
  paths.emplace_back(GOLDEN_FILES "/document-type.xml");
  for (const std::string& path : paths)
  {
    QByteArray document = QByteArray::fromStdString(contentOf(path));
    expectSameAsToolkit(document);
    SlowBuffer slow(&document);
    slow.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    QBuffer fast(&document);
    fast.open(QIODevice::ReadOnly);
    EXPECT_EQ(parsed(slow), parsed(fast)) << path;
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

TEST(Parsing, NeverReadsExternalEntities)
{
  const TemporaryFolder folder;
  const std::string secret = folder.file("secret", "secret");
  LoadError error;
  const std::optional<QDomDocument> document = parseXml(
      QString::fromStdString("<!DOCTYPE p [<!ENTITY x SYSTEM 'file://" + secret + "'>]><p>&x;</p>"),
      error);
  ASSERT_TRUE(document);
  EXPECT_EQ(document->documentElement().text(), "");
}
