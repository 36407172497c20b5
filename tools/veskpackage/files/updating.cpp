// SPDX-License-Identifier: Apache-2.0
#include "files/updating.hpp"

#include "files/manifestfile.hpp"
#include "files/replacing.hpp"
#include "output/complaint.hpp"

#include <QFile>

#include <cerrno>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>

namespace tool
{

namespace filesystem = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace
{
/// Locks an open file against other updates, until it is closed; false when it stays locked.
bool takesLock(const QFile& file, Clock::time_point deadline)
{
  while (flock(file.handle(), LOCK_EX | LOCK_NB) != 0)
  {
    // A file system without locks: that nobody has changed the file is still made sure at the end.
    if (errno != EWOULDBLOCK && errno != EINTR)
    {
      return true;
    }
    if (Clock::now() >= deadline)
    {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

/// Whether a path leads to an open file: not where that was replaced.
bool leadsTo(const std::string& path, const QFile& file)
{
  struct stat there = {};
  struct stat opened = {};
  return stat(path.c_str(), &there) == 0 && fstat(file.handle(), &opened) == 0 &&
         there.st_dev == opened.st_dev && there.st_ino == opened.st_ino;
}

std::string updateLocked(QFile& file, const std::string& path, const Update& work)
{
  std::string trouble;
  const std::optional<std::string> bytes = readBytes(file, trouble);
  if (!bytes)
  {
    return trouble;
  }
  const std::optional<std::string> updated = work(*bytes);
  if (!updated || *updated == *bytes)
  {
    return {};
  }
  const auto objection = [&]() -> std::string
  {
    std::string ignored;
    return readBytes(path, ignored) == bytes ? "" : "changed since it was read; nothing written";
  };
  return replaceFile(path, *updated, objection);
}

/// What links lead to; the name itself where that cannot be told.
std::string resolved(const std::string& name)
{
  std::error_code unknown;
  const filesystem::path path = filesystem::canonical(name, unknown);
  return unknown ? name : path.string();
}

std::string update(const std::string& name, const Update& work, Clock::time_point deadline)
{
  while (true)
  {
    const std::string path = resolved(name);
    std::error_code unknown;
    if (filesystem::exists(path, unknown) && !filesystem::is_regular_file(path, unknown))
    {
      return "no plain file, which could be replaced";
    }
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
    {
      return "Could not open for reading: " + file.errorString().toStdString();
    }
    if (!takesLock(file, deadline))
    {
      return "another program keeps it locked; nothing written";
    }
    if (leadsTo(path, file))
    {
      return updateLocked(file, path, work);
    }
    // What had the lock has replaced the file: the new one is waited for.
  }
}
} // namespace

ExitCode updateFile(const std::string& file, std::ostream& complaints, const Update& work,
                    std::chrono::milliseconds patience)
{
  const std::string trouble = update(file, work, Clock::now() + patience);
  if (!trouble.empty())
  {
    complain(complaints, file, trouble);
    return FileTrouble;
  }
  return Done;
}

} // namespace tool
