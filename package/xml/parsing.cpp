// SPDX-License-Identifier: Apache-2.0
#include <package/xml/documenttype.hpp>
#include <package/xml/markupscanner.hpp>
#include <package/xml/parsing.hpp>
#include <package/xml/saxapi.hpp>
#include <package/xml/text.hpp>

#include <QFile>

#include <array>
#include <utility>

namespace vesk
{
namespace
{
/// Hands a document to the toolkit's parser piece by piece, and ends it where it goes beyond a
/// limit, so that the parser stops there.
class LimitedSource : public QXmlInputSource
{
public:
  LimitedSource(QIODevice& input, Namespaces processing)
      : namespaces(processing), device(&input), scanner(processing)
  {
    readProlog();
  }

  LimitedSource(const QString& text, Namespaces processing)
      : namespaces(processing), undecided(text), scanner(processing)
  {
    readProlog();
  }

  const Namespaces namespaces;

  /// The error, if the document type or its entities exceed a limit.
  const std::optional<LoadError>& documentTypeRefusal() const { return documentTypeError; }

  /// Why the document was ended, if the parser came that far; otherwise empty.
  QString refusal() const { return parserAtEnd ? scanner.refusal() : QString(); }

  void fetchData() override
  {
    const QString piece = prolog.isNull() ? nextPiece() : std::exchange(prolog, QString());
    parserAtEnd = piece.isEmpty();
    setData(piece);
  }

private:
  /// Reads ahead until it is known whether there is a document type. If there is, reads everything,
  /// since such a document is parsed twice.
  void readProlog()
  {
    QString piece;
    do
    {
      piece = nextPiece();
      prolog += piece;
    } while (scanner.isInProlog() && !piece.isEmpty());
    if (scanner.foundDocumentType())
    {
      for (piece = decodeNext(); !piece.isEmpty(); piece = decodeNext())
      {
        prolog += piece;
      }
      documentTypeError = checkLimitsWithDocumentType(prolog, namespaces);
    }
  }

  /// The next piece of the document, up to where it goes beyond a limit; empty at the end.
  QString nextPiece()
  {
    if (!scanner.refusal().isEmpty())
    {
      return {};
    }
    QString piece = decodeNext();
    const int beyondLimit = scanner.scan(piece);
    if (beyondLimit >= 0)
    {
      piece.truncate(beyondLimit);
    }
    return piece;
  }

  QString decodeNext()
  {
    if (device == nullptr)
    {
      return std::exchange(undecided, QString());
    }
    QString piece;
    while (piece.isEmpty()) // as it is when a read returned only a part of a character
    {
      const qint64 size = device->read(chunk.data(), std::exchange(chunkSize, laterChunkSize));
      if (size <= 0)
      {
        break;
      }
      piece = fromRawData(QByteArray::fromRawData(chunk.data(), static_cast<int>(size)));
    }
    return piece;
  }

  // The toolkit looks for the encoding in the first 1024 bytes, its own chunk size. Larger chunks
  // after that are faster, up to about this size.
  static constexpr qint64 firstChunkSize = 1024;
  static constexpr qint64 laterChunkSize = 16384;
  std::array<char, laterChunkSize> chunk;

  QIODevice* device = nullptr;
  QString undecided; // a text that has not been taken yet
  qint64 chunkSize = firstChunkSize;
  MarkupScanner scanner;
  QString prolog; // read ahead, not yet given to the parser
  std::optional<LoadError> documentTypeError;
  bool parserAtEnd = false;
};

std::optional<QDomDocument> parse(LimitedSource& source, LoadError& error)
{
  if (source.documentTypeRefusal())
  {
    error = *source.documentTypeRefusal();
    return std::nullopt;
  }
  QDomDocument document;
  QString message;
  int line = 0;
  int column = 0;
  if (document.setContent(&source, source.namespaces == Namespaces::Processed, &message, &line,
                          &column))
  {
    return document;
  }
  const QString refusal = source.refusal();
  error = {
      {}, fromQString(refusal.isEmpty() ? message : refusal), line, column, !refusal.isEmpty()};
  return std::nullopt;
}
} // namespace

std::optional<QDomDocument> parseXml(QIODevice& device, LoadError& error)
{
  LimitedSource source(device, Namespaces::Ignored);
  return parse(source, error);
}

std::optional<QDomDocument> parseXml(const QString& text, LoadError& error)
{
  LimitedSource source(text, Namespaces::Processed);
  return parse(source, error);
}

std::optional<QDomDocument> parseDevice(QIODevice& device, LoadError& error)
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
  std::optional<QDomDocument> document = parseXml(device, error);
  if (file != nullptr && file->error() != QFileDevice::NoError)
  {
    error = {path, "cannot be read: " + fromQString(file->errorString())};
    return std::nullopt;
  }
  if (!document)
  {
    error.path = path;
  }
  return document;
}

std::optional<QDomDocument> parseFile(const std::string& path, LoadError& error)
{
  QFile file(toQString(path));
  if (!file.open(QIODevice::ReadOnly))
  {
    error = {fromQString(file.fileName()),
             "cannot be opened for reading: " + fromQString(file.errorString())};
    return std::nullopt;
  }
  return parseDevice(file, error);
}

} // namespace vesk
