// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_MANIFESTFILE_HPP
#define TOOLS_VESKPACKAGE_FILES_MANIFESTFILE_HPP

#include "exitcode.hpp"
#include "files/batch.hpp"

#include <edit/manifest.hpp>

#include <QFile>

#include <functional>
#include <optional>
#include <ostream>
#include <string>

namespace tool
{

/// A manifest as it was read.
struct Manifest
{
  std::string file; ///< as it was named; "-" is standard input
  std::string name; ///< the same for messages
  std::string bytes;
  vesk::edit::Manifest fields;
};

/// Larger files are refused: in memory, a parsed manifest can take 90 times its size.
inline constexpr int mostMebibytes = 32;

/// The content of \p file, or of standard input when that is "-". When it cannot be read or is too
/// large, returns none, and \p trouble says why.
std::optional<std::string> readBytes(const std::string& file, std::string& trouble,
                                     int mebibytes = mostMebibytes);
/// The same of a file that is open, or could not be opened.
std::optional<std::string> readBytes(QFile& input, std::string& trouble,
                                     int mebibytes = mostMebibytes);

/// Loads the manifest in \p file, or from standard input when that is "-". When it cannot be loaded,
/// says why and gives none.
std::optional<Manifest> load(const std::string& file, std::ostream& complaints);

/// The same of bytes that were read from \p file.
std::optional<Manifest> parse(const std::string& file, std::string bytes, std::ostream& complaints);

/// As forEachFile(), with the manifests that can be loaded; the others give FileTrouble.
ExitCode forEachManifest(const Inputs& inputs,
                         const std::function<ExitCode(Manifest& manifest, std::ostream& out,
                                                      std::ostream& complaints)>& work,
                         const std::string& separator = {});

/// What PackageInfo::saveToManifestFile() writes.
std::string manifestOf(const vesk::PackageInfo& package);

/// Writes \p content to \p file, or to \p out when that is "-". A file is replaced as a whole or not
/// at all, and keeps its mode. When that fails, says why and gives false.
bool writeFile(const std::string& content, const std::string& file, std::ostream& out,
               std::ostream& complaints);

} // namespace tool

#endif
