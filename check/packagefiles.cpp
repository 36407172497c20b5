// SPDX-License-Identifier: Apache-2.0
#include <check/packagefiles.hpp>

#include <QDir>

namespace vesk::check
{

bool leavesPackage(const QString& path)
{
  const QString clean = QDir::cleanPath(path);
  return QDir::isAbsolutePath(path) || clean == QLatin1String("..") ||
         clean.startsWith(QLatin1String("../"));
}

bool isForeign(const QString& path)
{
  const bool hasDrive = path.size() > 1 && path.at(1) == ':' && path.at(0).isLetter();
  return hasDrive || path.contains('\\');
}

QString plain(const QString& path)
{
  const bool isPlain = !path.contains(QLatin1String("./")) && !path.contains(QLatin1String("//")) &&
                       !path.endsWith('/') && !path.endsWith(QLatin1String("/."));
  return isPlain ? path : QDir::cleanPath(path);
}

QString programIn(const QString& commandLine)
{
  const QString trimmed = commandLine.trimmed();
  const QChar first = trimmed.isEmpty() ? QChar() : trimmed.front();
  const bool isQuoted = first == '"' || first == '\'';
  const int begin = isQuoted ? 1 : 0;
  int end = begin;
  while (end < trimmed.size() && (isQuoted ? trimmed[end] != first : !trimmed[end].isSpace()))
  {
    ++end;
  }
  const QString program = trimmed.mid(begin, end - begin);
  const QString special = isQuoted ? QStringLiteral("\\$`") : QStringLiteral("\\$`\"'*?[{~|&;<>=");
  const bool isSpecial = std::any_of(program.begin(), program.end(),
                                     [&special](QChar c) { return special.contains(c); });
  // What follows a closing quote at once is part of the word.
  const bool isCut = isQuoted && (end == trimmed.size() ||
                                  (end + 1 < trimmed.size() && !trimmed[end + 1].isSpace()));
  return program.contains('/') && !isSpecial && !isCut && !leavesPackage(program) ? program
                                                                                  : QString();
}

bool PackageFiles::has(const QString& path, bool isWhole)
{
  const QString key = isWhole ? path + '/' : path;
  const auto known = lookedUp.constFind(key);
  return known != lookedUp.constEnd() ? *known : *lookedUp.insert(key, lookUp(path, isWhole));
}

bool PackageFiles::lookUp(const QString& path, bool isWhole)
{
  const QFileInfo file(root + '/' + path);
  if (file.exists() || isWhole)
  {
    return file.exists();
  }
  auto folder = filesWithoutExtension.find(file.path());
  if (folder == filesWithoutExtension.end())
  {
    folder = filesWithoutExtension.insert(file.path(), {});
    for (const QFileInfo& other : file.dir().entryInfoList(QDir::Files))
    {
      folder->insert(other.completeBaseName());
    }
  }
  return folder->contains(file.fileName());
}

} // namespace vesk::check
