// SPDX-License-Identifier: Apache-2.0
#include <package/xml/documenttype.hpp>
#include <package/xml/markupscanner.hpp>
#include <package/xml/parsing.hpp>
#include <package/xml/saxapi.hpp>
#include <package/xml/text.hpp>

#include <QIODevice>

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
  /// Of bytes and, behind them, of a device that is not null.
  LimitedSource(std::string_view begin, QIODevice* rest, Namespaces processing)
      : namespaces(processing), bytes(begin), device(rest), scanner(processing)
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
    QString piece = std::exchange(undecided, QString());
    while (piece.isEmpty()) // as it is when a read returned only a part of a character
    {
      const qint64 size = read(std::exchange(chunkSize, laterChunkSize));
      if (size <= 0)
      {
        break;
      }
      piece = fromRawData(QByteArray::fromRawData(chunk.data(), static_cast<int>(size)));
    }
    return piece;
  }

  /// Reads at most \p size bytes into the chunk, and gives their number.
  qint64 read(qint64 size)
  {
    if (bytes.empty())
    {
      return device != nullptr ? device->read(chunk.data(), size) : 0;
    }
    const std::size_t taken = bytes.copy(chunk.data(), static_cast<std::size_t>(size));
    bytes.remove_prefix(taken);
    return static_cast<qint64>(taken);
  }

  // The toolkit looks for the encoding in the first 1024 bytes, its own chunk size. Larger chunks
  // after that are faster, up to about this size.
  static constexpr qint64 firstChunkSize = 1024;
  static constexpr qint64 laterChunkSize = 16384;
  std::array<char, laterChunkSize> chunk;

  std::string_view bytes; // that have not been taken yet
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
  return parseXml({}, &device, error);
}

std::optional<QDomDocument> parseXml(std::string_view begin, QIODevice* rest, LoadError& error)
{
  LimitedSource source(begin, rest, Namespaces::Ignored);
  return parse(source, error);
}

std::optional<QDomDocument> parseXml(const QString& text, LoadError& error)
{
  LimitedSource source(text, Namespaces::Processed);
  return parse(source, error);
}

} // namespace vesk
