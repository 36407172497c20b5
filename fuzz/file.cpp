// SPDX-License-Identifier: Apache-2.0
// The file reader: any bytes, in any encoding. Within the limits a parse is the toolkit's own, also
// that of a text.
#include "support.hpp"

#include <package/xml/parsing.hpp>

#include <QBuffer>
#include <QDomDocument>

namespace
{
// The toolkit reads in pieces of this size, and does not put together what they cut in two.
constexpr std::size_t pieceOfToolkit = 1024;

/// Everything about a node and what is below it.
void describe(const QDomNode& node, QString& out)
{
  out += QStringLiteral("%1 %2 %3 %4 %5:%6 ")
             .arg(node.nodeType())
             .arg(node.nodeName(), node.nodeValue(), node.namespaceURI())
             .arg(node.lineNumber())
             .arg(node.columnNumber());
  QStringList attributes;
  const QDomNamedNodeMap map = node.attributes();
  for (int i = 0; i < map.count(); ++i)
  {
    attributes += map.item(i).nodeName() + '=' + map.item(i).nodeValue();
  }
  attributes.sort();
  out += attributes.join(' ') + '(';
  for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
  {
    describe(child, out);
  }
  out += ')';
}

std::string described(bool isParsed, const QDomDocument& document, const vesk::SyntaxError& error)
{
  QString out;
  if (isParsed)
  {
    describe(document, out);
  }
  else
  {
    out = QStringLiteral("%1:%2 %3").arg(error.line).arg(error.column).arg(error.message);
  }
  return out.toStdString();
}

template <typename Parse, typename ParseByToolkit>
void requireSame(Parse parse, ParseByToolkit parseByToolkit)
{
  QDomDocument document;
  vesk::SyntaxError error;
  const bool isParsed = parse(document, error);
  if (error.isBeyondLimits)
  {
    return;
  }
  QDomDocument toolkitDocument;
  vesk::SyntaxError toolkitError;
  const bool isParsedByToolkit = parseByToolkit(toolkitDocument, toolkitError);
  const std::string ours = described(isParsed, document, error);
  const std::string toolkits = described(isParsedByToolkit, toolkitDocument, toolkitError);
  require(ours == toolkits, "parsed as\n" + ours + "\nand by the toolkit as\n" + toolkits);
}

void compareWithToolkit(const std::string& bytes)
{
  const QString text = QString::fromUtf8(bytes.c_str());
  requireSame([&](auto& document, auto& error) { return vesk::parseXml(text, document, error); },
              [&](auto& document, auto& e)
              { return document.setContent(text, true, &e.message, &e.line, &e.column); });
  if (bytes.size() > pieceOfToolkit)
  {
    return;
  }
  QBuffer device;
  device.setData(bytes.data(), static_cast<int>(bytes.size()));
  device.open(QIODevice::ReadOnly);
  requireSame([&](auto& document, auto& error) { return vesk::parseXml(device, document, error); },
              [&](auto& document, auto& e)
              {
                device.seek(0);
                return document.setContent(&device, &e.message, &e.line, &e.column);
              });
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const std::string bytes = textOf(data, size);
  vesk::PackageInfo package(examplePackage());
  const bool isLoaded = loadFile(package, bytes);
  require(takeLogged().size() == (isLoaded ? 0 : 1), "what is refused, and only that, is logged");
  if (!isLoaded)
  {
    requireEqual(vesk::AnyConstReference(examplePackage()), vesk::AnyConstReference(package),
                 "a refused file has changed the package");
  }
  compareWithToolkit(bytes);
  return 0;
}
