// SPDX-License-Identifier: Apache-2.0
#include "manifestfile.hpp"

#include "complaint.hpp"

#include <package/manifest2/loadmanifest.hpp>
#include <vesk/log.hpp>

#include <QDomDocument>
#include <QFile>

#include <algorithm>
#include <cstdio>

namespace
{
/// A file, or a standard stream in the place of "-".
class StreamOrFile : public QFile
{
public:
  StreamOrFile(const std::string& file, FILE* standardStream, const char* streamName)
      : name(file == "-" ? streamName : file), stream(file == "-" ? standardStream : nullptr)
  {
    setFileName(QString::fromStdString(name));
  }

  /// For messages; a file opened by its descriptor has no name any more.
  const std::string name;

  /// The library opens the file that it is given. Without a buffer, what cannot be written is known
  /// at once, and not lost when the file is closed.
  bool open(OpenMode mode) override
  {
    if ((mode & WriteOnly) != 0)
    {
      mode |= Unbuffered;
    }
    return stream != nullptr ? QFile::open(fileno(stream), mode) : QFile::open(mode);
  }

  /// Why not all could be written; empty when it was.
  const QString& writeError() const { return whyNotWritten; }

  /// All that was read, since a pipe cannot be read again.
  const QByteArray& bytesRead() const { return bytes; }

protected:
  qint64 readData(char* data, qint64 size) override
  {
    const qint64 read = QFile::readData(data, size);
    bytes.append(data, static_cast<int>(std::max<qint64>(read, 0)));
    return read;
  }

  qint64 writeData(const char* data, qint64 size) override
  {
    const qint64 written = QFile::writeData(data, size);
    if (written != size)
    {
      whyNotWritten = errorString();
    }
    return written;
  }

private:
  FILE* stream;
  QByteArray bytes;
  QString whyNotWritten;
};
} // namespace

bool load(vesk::PackageInfo& package, const std::string& file, vesk::PackageInfo2* sections)
{
  StreamOrFile input(file, stdin, "<stdin>");
  std::string logged;
  const vesk::log::HandlerId handler = vesk::log::addHandler(
      [&logged](const vesk::log::Message& message) { logged = message.text; });
  const bool loaded = package.loadFromManifestFile(input);
  vesk::log::removeHandler(handler);
  if (!loaded && input.error() == QFile::OpenError)
  {
    complain(input.name, "Could not open for reading: " + input.errorString().toStdString());
  }
  else if (!loaded)
  {
    complainAsLogged(input.name, logged);
  }
  else if (sections != nullptr)
  {
    QDomDocument document; // within the library's limits, since it has just been loaded
    document.setContent(input.bytesRead());
    *sections = vesk::loadXmlDocument(document);
  }
  return loaded;
}

bool save(const vesk::PackageInfo& package, const std::string& file)
{
  StreamOrFile output(file, stdout, "<stdout>");
  if (!package.saveToManifestFile(output))
  {
    complain(output.name, "Could not open for writing: " + output.errorString().toStdString());
    return false;
  }
  if (!output.writeError().isEmpty())
  {
    complain(output.name, "Could not write: " + output.writeError().toStdString());
    return false;
  }
  return true;
}
