// SPDX-License-Identifier: Apache-2.0
#include <package/xml/manifesttree.hpp>
#include <package/xml/parsing.hpp>
#include <package/xml/readalike.hpp>
#include <package/xml/text.hpp>

#include <QDomElement>
#include <QFile>

#include <algorithm>

namespace vesk
{
namespace
{
// What is larger goes to the toolkit at once, which reads it piece by piece. A device such as
// /dev/zero has no end, but is refused at its first byte.
constexpr qint64 mostBytes = qint64(1) << 26U;

/// Reads a device into \p bytes; false when that is not all of it.
bool readAll(QIODevice& device, std::string& bytes)
{
  constexpr qint64 pieceSize = 16384;
  const qint64 expected = device.isSequential() ? 0 : device.size() - device.pos();
  bytes.reserve(static_cast<std::size_t>(std::clamp(expected, qint64(0), mostBytes) + pieceSize));
  for (std::size_t end = 0; end < mostBytes;)
  {
    bytes.resize(end + pieceSize);
    const qint64 size = device.read(&bytes[end], pieceSize);
    end += static_cast<std::size_t>(std::max(size, qint64(0)));
    bytes.resize(end);
    if (size <= 0)
    {
      return true;
    }
  }
  return false;
}

std::optional<ManifestTree> toolkitsTree(const std::optional<QDomDocument>& document)
{
  return document ? std::optional(ManifestTree(*document)) : std::nullopt;
}
} // namespace

XmlNode ManifestTree::root() const
{
  const QDomDocument* const document = inToolkit();
  return document != nullptr ? XmlNode(document->documentElement())
                             : XmlNode(std::get<source::Document>(tree).root());
}

std::optional<ManifestTree> parseManifest(QIODevice& device, LoadError& error, Parsers parsers,
                                          std::optional<std::string>* left)
{
  if (parsers == Parsers::Toolkit)
  {
    return toolkitsTree(parseXml(device, error));
  }
  std::string bytes;
  const bool isAll = readAll(device, bytes);
  if (isAll)
  {
    if (std::optional<source::Document> document = parseReadAlike(bytes, Namespaces::Ignored))
    {
      return ManifestTree(std::move(*document));
    }
  }
  auto tree = toolkitsTree(parseXml(bytes, isAll ? nullptr : &device, error));
  if (left != nullptr && isAll)
  {
    *left = std::move(bytes);
  }
  return tree;
}

std::optional<ManifestTree> parseManifest(const std::string& text, LoadError& error,
                                          Parsers parsers)
{
  if (parsers == Parsers::Both && text.size() < mostBytes)
  {
    std::string bytes = text;
    if (std::optional<source::Document> document = parseReadAlike(bytes, Namespaces::Processed))
    {
      return ManifestTree(std::move(*document));
    }
  }
  return toolkitsTree(parseXml(toQString(text), error));
}

std::optional<ManifestTree> parseDevice(QIODevice& device, LoadError& error, Parsers parsers,
                                        std::optional<std::string>* left)
{
  auto* const file = qobject_cast<QFileDevice*>(&device);
  const std::string path = file != nullptr ? fromQString(file->fileName()) : std::string();
  if (!device.isReadable())
  {
    error = {path, "is not open for reading"};
    return std::nullopt;
  }
  if (file != nullptr)
  {
    file->unsetError(); // from earlier operations
  }
  std::optional<ManifestTree> tree = parseManifest(device, error, parsers, left);
  if (file != nullptr && file->error() != QFileDevice::NoError)
  {
    error = {path, "cannot be read: " + fromQString(file->errorString())};
    return std::nullopt;
  }
  if (!tree)
  {
    error.path = path;
  }
  return tree;
}

std::optional<ManifestTree> parseFile(const std::string& path, LoadError& error, Parsers parsers,
                                      std::optional<std::string>* left)
{
  QFile file(toQString(path));
  if (!file.open(QIODevice::ReadOnly))
  {
    error = {fromQString(file.fileName()),
             "cannot be opened for reading: " + fromQString(file.errorString())};
    return std::nullopt;
  }
  return parseDevice(file, error, parsers, left);
}

} // namespace vesk
