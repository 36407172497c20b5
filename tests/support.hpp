// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_HPP
#define TESTS_SUPPORT_HPP

#include <vesk/log.hpp>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <functional>
#include <pthread.h>
#include <sstream>
#include <string>
#include <vector>

/// Collects the messages written during its life. The default handler is removed for good.
class CapturedLog
{
public:
  CapturedLog()
  {
    vesk::log::removeHandler(vesk::log::defaultHandler);
    id = vesk::log::addHandler([this](const vesk::log::Message& message)
                               { messages.push_back(message); });
  }
  CapturedLog(const CapturedLog&) = delete;
  CapturedLog& operator=(const CapturedLog&) = delete;
  ~CapturedLog() { vesk::log::removeHandler(id); }

  std::vector<vesk::log::Message> messages;

private:
  vesk::log::HandlerId id;
};

template <typename Printable>
std::string printed(const Printable& value)
{
  std::ostringstream out;
  out << value;
  return out.str();
}

/// The message of the error that \p action throws; empty when it throws none.
template <typename Error, typename Action>
std::string thrown(const Action& action)
{
  try
  {
    action();
    return {};
  }
  catch (const Error& error)
  {
    return error.what();
  }
}

inline std::string contentOf(const std::string& path)
{
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::ReadOnly))
  {
    throw std::runtime_error("cannot read " + path);
  }
  return file.readAll().toStdString();
}

/// A folder with files of a test's own, gone at its end.
class TemporaryFolder
{
public:
  std::string path(const std::string& name) const
  {
    return folder.filePath(QString::fromStdString(name)).toStdString();
  }

  /// Writes a file and gives its path.
  std::string file(const std::string& name, const std::string& content) const
  {
    QFile file(QString::fromStdString(path(name)));
    file.open(QIODevice::WriteOnly);
    file.write(content.data(), static_cast<qint64>(content.size()));
    return path(name);
  }

private:
  QTemporaryDir folder;
};

inline std::vector<std::string> exampleManifests()
{
  std::vector<std::string> paths;
  for (const QFileInfo& file : QDir(EXAMPLE_MANIFESTS).entryInfoList({"*.xml"}))
  {
    paths.push_back(file.filePath().toStdString());
  }
  return paths;
}

/// Runs \p action on a thread with a stack of 256 KB, as small threads on a robot have.
inline void onSmallStack(std::function<void()> action)
{
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 262144);
  pthread_t thread{};
  const auto run = [](void* toRun) -> void*
  {
    (*static_cast<std::function<void()>*>(toRun))();
    return nullptr;
  };
  if (pthread_create(&thread, &attributes, run, &action) != 0)
  {
    throw std::runtime_error("cannot start a thread");
  }
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

struct ProgramRun
{
  int exitCode = -1;
  std::string out;
  std::string err;
};

/// Runs a program with \p input, and \p environment ("NAME=value") added to this process's. What a
/// shell's own programs take for characters is the same everywhere.
inline ProgramRun runProgram(const QString& program, const QStringList& arguments,
                             const std::string& input = {}, const QStringList& environment = {})
{
  QProcess process;
  process.setEnvironment(QProcess::systemEnvironment() + QStringList("LC_ALL=C.UTF-8") +
                         environment);
  process.start(program, arguments);
  process.write(input.data(), static_cast<qint64>(input.size()));
  process.closeWriteChannel();
  if (!process.waitForFinished(60000))
  {
    throw std::runtime_error(program.toStdString() + " did not run to its end");
  }
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
          process.readAllStandardOutput().toStdString(),
          process.readAllStandardError().toStdString()};
}

#endif
