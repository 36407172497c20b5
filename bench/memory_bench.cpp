// SPDX-License-Identifier: Apache-2.0
// Peak memory of loading a manifest beside that of the toolkit's bare parse. Each is measured in a
// process of its own, since a peak cannot be taken back.
#include "samplepackage.hpp"

#include <source/document.hpp>

#include <QDomDocument>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
/// Kilobytes that \p work adds to the peak of a process.
long peakOf(const std::function<bool()>& work)
{
  const pid_t child = fork();
  if (child == 0)
  {
    _exit(work() ? 0 : 1);
  }
  int status = 0;
  struct rusage usage = {};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0)
  {
    static_cast<void>(std::fputs("a measured process failed\n", stderr));
    std::exit(1);
  }
  return usage.ru_maxrss;
}
} // namespace

int main()
{
  std::printf("%10s %14s %14s %8s %14s %8s\n", "behaviors", "toolkit KiB", "load KiB", "ratio",
              "source KiB", "ratio");
  const long idle = peakOf([] { return true; });
  for (const int behaviors : {100, 10000})
  {
    const QString path = sampleManifestPath(behaviors);
    peakOf( // in a process of its own as well, so that this one stays small
        [&]
        {
          writeSampleManifest(path, behaviors);
          return true;
        });
    const long toolkit = peakOf(
                             [&path]
                             {
                               QFile file(path);
                               QDomDocument document;
                               return file.open(QIODevice::ReadOnly) && document.setContent(&file);
                             }) -
                         idle;
    const long load = peakOf(
                          [&path]
                          {
                            vesk::PackageInfo package;
                            return package.loadFromManifestFile(path.toStdString());
                          }) -
                      idle;
    const long source =
        peakOf([&path]
               { return !vesk::source::Document::parse(contentOf(path)).error().has_value(); }) -
        idle;
    QFile::remove(path);
    const auto ratio = [toolkit](long kib)
    { return static_cast<double>(kib) / static_cast<double>(toolkit); };
    std::printf("%10d %14ld %14ld %8.2f %14ld %8.2f\n", behaviors, toolkit, load, ratio(load),
                source, ratio(source));
  }
  return 0;
}
