// SPDX-License-Identifier: Apache-2.0
// Time and peak memory of checking folders of many small manifests with the tool, by its jobs.
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
void run(const std::string& folder, int manifests, int jobs)
{
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0)
  {
    execl(TOOL, TOOL, "check", "--quiet", "--jobs", std::to_string(jobs).c_str(), folder.c_str(),
          nullptr);
    _exit(127);
  }
  int status = 0;
  struct rusage usage = {};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0)
  {
    static_cast<void>(std::fputs("the tool failed\n", stderr));
    std::exit(1);
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  const double busy = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                      static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
  std::printf("%10d %6d %9.2f %10.2f %10.1f\n", manifests, jobs, time.count(), busy / time.count(),
              static_cast<double>(usage.ru_maxrss) / 1024);
}
} // namespace

int main()
{
  std::printf("%10s %6s %9s %10s %10s\n", "manifests", "jobs", "seconds", "cores", "peak MiB");
  QFile original(EXAMPLE_MANIFEST);
  original.open(QIODevice::ReadOnly);
  const QByteArray example = original.readAll();
  for (const int manifests : {1000, 10000})
  {
    const QTemporaryDir folder;
    for (int i = 0; i < manifests; ++i)
    {
      QByteArray manifest = example;
      manifest.replace("uuid=\"", "uuid=\"" + QByteArray::number(i)); // no two have the same
      QFile file(folder.filePath(QStringLiteral("%1.xml").arg(i)));
      file.open(QIODevice::WriteOnly);
      file.write(manifest);
    }
    for (const int jobs : {1, 2})
    {
      run(folder.path().toStdString(), manifests, jobs);
    }
  }
  return 0;
}
