// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_SAMPLEPACKAGE_HPP
#define BENCH_SAMPLEPACKAGE_HPP

#include <package/manifest2/packageinfo2.hpp>
#include <package/packageinfo.hpp>

#include <QString>

/// The package of examples/manifests/greeting.xml with its behavior so many times.
vesk::PackageInfo samplePackage(int behaviors);

/// The same package as loadManifest() reads it.
vesk::PackageInfo2 sampleSections(int behaviors);

/// A path in the temporary folder for the package's manifest; each process has its own.
QString sampleManifestPath(int behaviors);

/// Writes the sample package's manifest to \p path.
void writeSampleManifest(const QString& path, int behaviors);

/// The bytes of a file.
std::string contentOf(const QString& path);

#endif
