// SPDX-License-Identifier: Apache-2.0
// Reading and writing manifests beside what the toolkit alone needs for the same bytes.
#include "least.hpp"
#include "samplepackage.hpp"

#include <check/manifestcheck.hpp>
#include <edit/changes.hpp>
#include <package/manifest2/loadmanifest.hpp>
#include <source/document.hpp>

#include <QDomDocument>
#include <QFile>
#include <QTextStream>

#include <stdexcept>

namespace
{
/// A file with the sample manifest of this benchmark's size, gone at its end.
class ManifestFile
{
public:
  explicit ManifestFile(const benchmark::State& state)
      : path(sampleManifestPath(static_cast<int>(state.range(0))))
  {
    writeSampleManifest(path, static_cast<int>(state.range(0)));
  }
  ManifestFile(const ManifestFile&) = delete;
  ManifestFile& operator=(const ManifestFile&) = delete;
  ~ManifestFile() { QFile::remove(path); }

  const QString path;
};

void parse(QDomDocument& document, const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
  {
    throw std::runtime_error("cannot parse " + path.toStdString());
  }
}

void loadFileToolkit(benchmark::State& state)
{
  const ManifestFile manifest(state);
  while (state.KeepRunning())
  {
    QDomDocument document;
    parse(document, manifest.path);
    benchmark::DoNotOptimize(document);
  }
}

void loadTextToolkit(benchmark::State& state)
{
  const std::string text = contentOf(ManifestFile(state).path);
  while (state.KeepRunning())
  {
    QDomDocument document;
    if (!document.setContent(QString::fromStdString(text), true))
    {
      throw std::runtime_error("cannot parse a text");
    }
    benchmark::DoNotOptimize(document);
  }
}

void loadText(benchmark::State& state)
{
  const std::string text = contentOf(ManifestFile(state).path);
  while (state.KeepRunning())
  {
    vesk::PackageInfo package;
    if (!package.loadFromManifestContent(text))
    {
      throw std::runtime_error("cannot load a text");
    }
    benchmark::DoNotOptimize(package);
  }
}

void parseSource(benchmark::State& state)
{
  const ManifestFile manifest(state);
  while (state.KeepRunning())
  {
    auto document = vesk::source::Document::parse(contentOf(manifest.path));
    benchmark::DoNotOptimize(document);
  }
}

void loadFile(benchmark::State& state)
{
  const ManifestFile manifest(state);
  const std::string path = manifest.path.toStdString();
  while (state.KeepRunning())
  {
    vesk::PackageInfo package;
    if (!package.loadFromManifestFile(path))
    {
      throw std::runtime_error("cannot load " + path);
    }
    benchmark::DoNotOptimize(package);
  }
}

void loadSections(benchmark::State& state)
{
  const ManifestFile manifest(state);
  const std::string path = manifest.path.toStdString();
  while (state.KeepRunning())
  {
    benchmark::DoNotOptimize(vesk::loadManifest(path));
  }
}

void check(benchmark::State& state)
{
  const ManifestFile manifest(state);
  const std::string path = manifest.path.toStdString();
  while (state.KeepRunning())
  {
    benchmark::DoNotOptimize(vesk::check::checkFile(path));
  }
}

/// From a file's bytes to its changed bytes, as the tool does it.
void setField(benchmark::State& state)
{
  const ManifestFile manifest(state);
  while (state.KeepRunning())
  {
    const std::string bytes = contentOf(manifest.path);
    vesk::LoadError error;
    const auto before = vesk::edit::readManifest(bytes, error).value();
    vesk::edit::Manifest after = before;
    setField(after, {"version"}, "2.0");
    benchmark::DoNotOptimize(changed(bytes, before, after));
  }
}

void saveStringToolkit(benchmark::State& state)
{
  const ManifestFile manifest(state);
  QDomDocument document;
  parse(document, manifest.path);
  while (state.KeepRunning())
  {
    benchmark::DoNotOptimize(document.toString(1));
  }
}

void saveString(benchmark::State& state)
{
  const vesk::PackageInfo package = samplePackage(static_cast<int>(state.range(0)));
  while (state.KeepRunning())
  {
    benchmark::DoNotOptimize(package.saveToManifestContent());
  }
}

void saveFileToolkit(benchmark::State& state)
{
  const ManifestFile manifest(state);
  QDomDocument document;
  parse(document, manifest.path);
  while (state.KeepRunning())
  {
    QFile file(manifest.path);
    file.open(QIODevice::WriteOnly);
    QTextStream stream(&file);
    document.save(stream, 2, QDomNode::EncodingFromDocument);
  }
}

void saveFile(benchmark::State& state)
{
  const ManifestFile manifest(state);
  const std::string path = manifest.path.toStdString();
  const vesk::PackageInfo package = samplePackage(static_cast<int>(state.range(0)));
  while (state.KeepRunning())
  {
    benchmark::DoNotOptimize(package.saveToManifestFile(path));
  }
}
} // namespace

BENCHMARK(loadFileToolkit)->Apply(behaviorCounts);
BENCHMARK(parseSource)->Apply(behaviorCounts);
BENCHMARK(loadFile)->Apply(behaviorCounts);
BENCHMARK(loadTextToolkit)->Apply(behaviorCounts);
BENCHMARK(loadText)->Apply(behaviorCounts);
BENCHMARK(loadSections)->Apply(behaviorCounts);
BENCHMARK(check)->Apply(behaviorCounts);
BENCHMARK(setField)->Apply(behaviorCounts);
BENCHMARK(saveStringToolkit)->Apply(behaviorCounts);
BENCHMARK(saveString)->Apply(behaviorCounts);
BENCHMARK(saveFileToolkit)->Apply(behaviorCounts);
BENCHMARK(saveFile)->Apply(behaviorCounts);
