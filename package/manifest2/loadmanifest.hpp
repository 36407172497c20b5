// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_MANIFEST2_LOADMANIFEST_HPP
#define PACKAGE_MANIFEST2_LOADMANIFEST_HPP

#include <package/export.hpp>
#include <package/loaderror.hpp>
#include <package/manifest2/packageinfo2.hpp>

#include <string>

class QDomDocument;
class QIODevice;

namespace vesk
{

class PackageInfo;

/// Reads the manifest in the file at \p path (UTF-8).
///
/// Throws std::runtime_error when the file cannot be opened ("Could not open PATH for reading.") or
/// is not well-formed ("Syntax error in PATH:LINE:COLUMN: WHY", both from 1). As not well-formed
/// counts, too, what goes beyond the limits that PackageInfo::loadFromManifestFile() names; external
/// entities are never read. What is thrown is also logged as an error in the category
/// "vesk.package.info", which exists from when the library is loaded; its level does not change what
/// is thrown. May be called from any thread.
VESKPACKAGE_EXPORT PackageInfo2 loadManifest(const std::string& path);

/// Reads a manifest as loadManifest() does, but logs nothing and throws nothing for what it is: on
/// success replaces \p info, on failure fills \p error and gives false; the other is left as it was. A
/// file that cannot be read to its end is an error, too, where loadManifest() takes what it gets. May
/// be called from any thread.
/// \{

/// Reads the file at \p path (UTF-8).
VESKPACKAGE_EXPORT bool readManifestFile(const std::string& path, PackageInfo2& info,
                                         LoadError& error);
/// Reads all that an open device gives from where it is, as if it were a file, and leaves it open.
VESKPACKAGE_EXPORT bool readManifestDevice(QIODevice& device, PackageInfo2& info, LoadError& error);
/// Reads the text of a manifest, up to the first NUL byte, with namespace processing, as
/// PackageInfo::readManifestText() does.
VESKPACKAGE_EXPORT bool readManifestText(const std::string& text, PackageInfo2& info,
                                         LoadError& error);
/// Reads both records of a manifest and parses it once: adds to \p package as
/// PackageInfo::readManifestDevice() does, and replaces \p info. On failure both are as they were.
VESKPACKAGE_EXPORT bool readManifestDevice(QIODevice& device, PackageInfo& package,
                                           PackageInfo2& info, LoadError& error);
/// \}

/// Takes a manifest from a parsed document, whatever the name of its root; a document without a root
/// gives an empty one. Never fails on what the document holds: attributes that are missing give empty
/// texts, unknown elements are skipped, and of repeated sections the last counts. Where names,
/// descriptions or languages are listed, every child counts: a comment there gives an empty text
/// under an empty language, or an empty language. The tree is walked recursively, so that it should
/// not come from an unguarded parse of a strange file.
VESKPACKAGE_EXPORT PackageInfo2 loadXmlDocument(const QDomDocument& document);

} // namespace vesk

#endif
