// SPDX-License-Identifier: Apache-2.0
#include "samplepackage.hpp"

#include <package/manifest2/loadmanifest.hpp>

#include <QCoreApplication>
#include <QDir>

#include <stdexcept>

vesk::PackageInfo samplePackage(int behaviors)
{
  vesk::PackageInfo package;
  if (!package.loadFromManifestFile(EXAMPLE_MANIFEST))
  {
    throw std::runtime_error("cannot load " EXAMPLE_MANIFEST);
  }
  vesk::BehaviorInfo behavior = package.behaviors().front();
  package.clearBehaviors();
  for (int i = 0; i < behaviors; ++i)
  {
    behavior.setPath("greeting/hello" + std::to_string(i)); // no two have the same
    package.addBehavior(behavior);
  }
  return package;
}

vesk::PackageInfo2 sampleSections(int behaviors)
{
  vesk::PackageInfo2 sections = vesk::loadManifest(EXAMPLE_MANIFEST);
  const vesk::BehaviorInfo behavior = sections.behaviors().front();
  sections.behaviors().assign(static_cast<std::size_t>(behaviors), behavior);
  return sections;
}

QString sampleManifestPath(int behaviors)
{
  return QDir::temp().filePath(QStringLiteral("manifest_bench_%1_%2.xml")
                                   .arg(QCoreApplication::applicationPid())
                                   .arg(behaviors));
}

void writeSampleManifest(const QString& path, int behaviors)
{
  if (!samplePackage(behaviors).saveToManifestFile(path.toStdString()))
  {
    throw std::runtime_error("cannot write " + path.toStdString());
  }
}

std::string contentOf(const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    throw std::runtime_error("cannot read " + path.toStdString());
  }
  return file.readAll().toStdString();
}
