// SPDX-License-Identifier: Apache-2.0
// Generates the repository's files that are made from the format's description. Reads those that
// have parts written by hand in one folder, and writes all to another, which may be the same:
// veskpackage_format_files FROM TO
#include "files.hpp"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace
{
QString contentOf(const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    throw std::runtime_error("cannot read " + path.toStdString());
  }
  return QString::fromUtf8(file.readAll());
}

void writeFile(const QString& path, const QString& content)
{
  QFile file(path);
  const QByteArray bytes = content.toUtf8();
  if (!QFileInfo(path).dir().mkpath(QStringLiteral(".")) || !file.open(QIODevice::WriteOnly) ||
      file.write(bytes) != bytes.size() || !file.flush())
  {
    throw std::runtime_error("cannot write " + path.toStdString());
  }
}

void makeFiles(const QString& from, const QString& to)
{
  const QString documentPath = QStringLiteral("/docs/manifest.md");
  const QString dictionaryPath = QStringLiteral("/fuzz/manifest.dict");
  const QString newReference = reference(contentOf(from + documentPath));
  const QString newDictionary = dictionary(contentOf(from + dictionaryPath));
  writeFile(to + documentPath, newReference);
  writeFile(to + dictionaryPath, newDictionary);
  writeFile(to + QStringLiteral("/docs/rules.md"), rulesDocument());
  writeFile(to + QStringLiteral("/schema/manifest.rng"), relaxNg());
  writeFile(to + QStringLiteral("/schema/manifest.xsd"), xmlSchema());
}
} // namespace

int main(int argc, char** argv)
{
  if (argc != 3)
  {
    static_cast<void>(std::fputs("usage: veskpackage_format_files FROM TO\n", stderr));
    return 2;
  }
  try
  {
    makeFiles(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
    return 0;
  }
  catch (const std::exception& error)
  {
    static_cast<void>(std::fprintf(stderr, "veskpackage_format_files: %s\n", error.what()));
    return 1;
  }
}
