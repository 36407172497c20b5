// SPDX-License-Identifier: Apache-2.0
#include "files/replacing.hpp"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace tool
{
namespace
{
std::string couldNotWrite(const QString& reason)
{
  return "Could not write: " + reason.toStdString();
}

std::string opened(QFileDevice& file)
{
  return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
             ? std::string()
             : couldNotWrite(file.errorString());
}

/// Writes past the toolkit, which does not tell a file that takes nothing from an error.
std::string written(const QFileDevice& file, const std::string& content)
{
  const char* left = content.data();
  const char* const end = left + content.size();
  while (left < end) // a disk that is nearly full takes a part
  {
    const ssize_t taken = write(file.handle(), left, static_cast<std::size_t>(end - left));
    if (taken == 0)
    {
      return couldNotWrite("nothing more is taken");
    }
    if (taken < 0 && errno != EINTR)
    {
      return couldNotWrite(qt_error_string(errno));
    }
    left += std::max<ssize_t>(taken, 0);
  }
  return {};
}

std::unique_ptr<QFileDevice> fileAt(const QString& path)
{
  const QFileInfo existing(path);
  if (existing.exists() && !existing.isFile()) // a device or pipe: not to be replaced
  {
    return std::make_unique<QFile>(path);
  }
  return std::make_unique<QSaveFile>(path);
}
} // namespace

GrowingFile::GrowingFile(const std::string& filePath)
    : path(filePath), file(fileAt(QString::fromStdString(filePath))), trouble(opened(*file))
{}

void GrowingFile::append(const std::string& content)
{
  trouble = trouble.empty() ? written(*file, content) : trouble;
}

std::string GrowingFile::finish(const Objection& objection)
{
  auto* const replacing = qobject_cast<QSaveFile*>(file.get());
  if (replacing == nullptr || !trouble.empty())
  {
    return trouble;
  }
  // The toolkit keeps the mode, too, but passes over it where that fails.
  struct stat old = {};
  if (stat(path.c_str(), &old) == 0 && fchmod(file->handle(), old.st_mode & 07777) != 0)
  {
    return "Could not keep the mode: " + qt_error_string(errno).toStdString();
  }
  // Some write errors appear only when the data reaches the disk, and the toolkit does not wait for
  // that. EINVAL: there is nothing to sync.
  if (fdatasync(file->handle()) != 0 && errno != EINVAL)
  {
    return couldNotWrite(qt_error_string(errno));
  }
  std::string objected = objection ? objection() : std::string();
  if (!objected.empty())
  {
    return objected;
  }
  return replacing->commit() ? std::string() : couldNotWrite(file->errorString());
}

std::string replaceFile(const std::string& path, const std::string& content,
                        const Objection& objection)
{
  GrowingFile file(path);
  file.append(content);
  return file.finish(objection);
}

} // namespace tool
