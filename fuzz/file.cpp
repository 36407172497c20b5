// SPDX-License-Identifier: Apache-2.0
// The file reader: any bytes, in any encoding. Within the limits, parsing a file or a text must
// give the same as the toolkit's own parse.
#include "support.hpp"

#include <package/xml/parsing.hpp>

#include <QBuffer>

namespace
{
// The toolkit reads pieces of this size, and does not join characters that are cut in two by them.
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

std::string described(const std::optional<QDomDocument>& document, const vesk::LoadError& error)
{
  if (!document)
  {
    return std::to_string(error.line) + ':' + std::to_string(error.column) + ' ' + error.message;
  }
  QString out;
  describe(*document, out);
  return out.toStdString();
}

/// Requires that a parse has given the same as the toolkit's of the same source.
template <typename Source>
void requireSame(const std::optional<QDomDocument>& document, const vesk::LoadError& error,
                 Source&& source, bool namespaceProcessing)
{
  if (!document && error.isBeyondLimits)
  {
    return;
  }
  QDomDocument toolkitDocument;
  QString message;
  vesk::LoadError toolkitError;
  const bool isParsed = toolkitDocument.setContent(source, namespaceProcessing, &message,
                                                   &toolkitError.line, &toolkitError.column);
  toolkitError.message = message.toStdString();
  const std::string ours = described(document, error);
  const std::string toolkits =
      described(isParsed ? std::optional(toolkitDocument) : std::nullopt, toolkitError);
  require(ours == toolkits, "parsed as\n" + ours + "\nand by the toolkit as\n" + toolkits);
}

void compareWithToolkit(const std::string& bytes)
{
  const QString text = QString::fromUtf8(bytes.c_str());
  vesk::LoadError error;
  std::optional<QDomDocument> document = vesk::parseXml(text, error);
  requireSame(document, error, text, true);
  if (bytes.size() > pieceOfToolkit)
  {
    return;
  }
  QBuffer device;
  device.setData(bytes.data(), static_cast<int>(bytes.size()));
  device.open(QIODevice::ReadOnly);
  document = vesk::parseXml(device, error);
  device.seek(0);
  requireSame(document, error, &device, false);
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const std::string bytes = textOf(data, size);
  QBuffer device;
  device.setData(bytes.data(), static_cast<int>(bytes.size()));
  device.open(QIODevice::ReadOnly);
  readBothWays([&](auto& logging) { return loadFile(logging, bytes); },
               [&](auto& silent, auto& error) { return silent.readManifestDevice(device, error); },
               {});
  compareWithToolkit(bytes);
  return 0;
}
