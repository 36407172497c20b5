// SPDX-License-Identifier: Apache-2.0
#include "inputfiles.hpp"

#include <QDir>
#include <QXmlStreamReader>

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace
{
/// Whether a file in a folder is a manifest: by its name, or by the name of its root. What cannot be
/// read counts, too, since it might be one.
bool isManifest(const QFileInfo& file)
{
  if (file.fileName() == QLatin1String("manifest.xml"))
  {
    return true;
  }
  if (file.suffix() != QLatin1String("xml"))
  {
    return false;
  }
  QFile content(file.filePath());
  content.open(QIODevice::ReadOnly);
  QXmlStreamReader reader(&content);
  return !reader.readNextStartElement() || reader.name() == QLatin1String("package");
}

/// What is in a folder, last first.
QStringList entriesOf(const QString& folder)
{
  QStringList entries;
  const QDir::Filters filters = QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden;
  for (const QFileInfo& entry : QDir(folder).entryInfoList(filters, QDir::Name | QDir::Reversed))
  {
    if (!(entry.isSymLink() && entry.isDir())) // which could lead in circles
    {
      entries += entry.filePath();
    }
  }
  return entries;
}
} // namespace

InputFiles::InputFiles(const Inputs& inputs) : named(inputs)
{
  if (!named.filesFrom.empty() && named.filesFrom != "-")
  {
    list.open(named.filesFrom);
    if (!list || QFileInfo(QString::fromStdString(named.filesFrom)).isDir())
    {
      throw std::runtime_error("cannot read the list of files " + named.filesFrom);
    }
  }
}

std::optional<std::string> InputFiles::next()
{
  if (std::optional<std::string> file = nextInFolders())
  {
    return file;
  }
  while (std::optional<std::string> file = nextNamed())
  {
    const QString path = QString::fromStdString(*file);
    const QFileInfo info(path);
    if (!named.searchFolders || !info.isDir() || !info.isReadable())
    {
      return file;
    }
    folders.push_back(entriesOf(path));
    if (std::optional<std::string> inFolder = nextInFolders())
    {
      return inFolder;
    }
  }
  return std::nullopt;
}

std::optional<std::string> InputFiles::nextNamed()
{
  if (given < named.files.size())
  {
    return named.files[given++];
  }
  std::istream& lines = named.filesFrom == "-" ? std::cin : list;
  std::string line;
  while (!named.filesFrom.empty() && std::getline(lines, line))
  {
    if (!line.empty() && line.back() == '\r') // of a list from another system
    {
      line.pop_back();
    }
    if (!line.empty())
    {
      return line;
    }
  }
  return std::nullopt;
}

std::optional<std::string> InputFiles::nextInFolders()
{
  while (!folders.empty())
  {
    if (folders.back().isEmpty())
    {
      folders.pop_back();
      continue;
    }
    const QFileInfo entry(folders.back().takeLast());
    if (entry.isDir() && entry.isReadable())
    {
      folders.push_back(entriesOf(entry.filePath()));
    }
    else if (entry.isDir() || isManifest(entry))
    {
      return entry.filePath().toStdString();
    }
  }
  return std::nullopt;
}
