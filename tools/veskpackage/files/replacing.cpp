// SPDX-License-Identifier: Apache-2.0
#include "files/replacing.hpp"

#include <QFile>
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

/// Writes past the toolkit, which does not tell a file that takes nothing from an error.
std::string writeTo(QFileDevice& file, const std::string& content)
{
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
  {
    return couldNotWrite(file.errorString());
  }
  const char* left = content.data();
  const char* const end = left + content.size();
  while (left < end) // a disk that is nearly full takes a part
  {
    const ssize_t written = write(file.handle(), left, static_cast<std::size_t>(end - left));
    if (written == 0)
    {
      return couldNotWrite("nothing more is taken");
    }
    if (written < 0 && errno != EINTR)
    {
      return couldNotWrite(qt_error_string(errno));
    }
    left += std::max<ssize_t>(written, 0);
  }
  return {};
}
} // namespace

std::string replaceFile(const std::string& path, const std::string& content,
                        const Objection& objection)
{
  struct stat old = {};
  const bool exists = stat(path.c_str(), &old) == 0;
  QSaveFile file(QString::fromStdString(path));
  std::string trouble = writeTo(file, content);
  // The toolkit keeps the mode, too, but passes over it where that fails.
  if (trouble.empty() && exists && fchmod(file.handle(), old.st_mode & 07777) != 0)
  {
    trouble = "Could not keep the mode: " + qt_error_string(errno).toStdString();
  }
  // Some write errors appear only when the data reaches the disk, and the toolkit does not wait for
  // that. EINVAL: there is nothing to sync.
  if (trouble.empty() && fdatasync(file.handle()) != 0 && errno != EINVAL)
  {
    trouble = couldNotWrite(qt_error_string(errno));
  }
  if (trouble.empty() && objection)
  {
    trouble = objection();
  }
  if (!trouble.empty())
  {
    file.cancelWriting();
    return trouble;
  }
  return file.commit() ? std::string() : couldNotWrite(file.errorString());
}

std::string writeInto(const std::string& path, const std::string& content)
{
  QFile device(QString::fromStdString(path));
  return writeTo(device, content);
}

} // namespace tool
