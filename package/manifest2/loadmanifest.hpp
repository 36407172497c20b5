// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_MANIFEST2_LOADMANIFEST_HPP
#define PACKAGE_MANIFEST2_LOADMANIFEST_HPP

#include <package/export.hpp>
#include <package/loaderror.hpp>
#include <package/manifest2/packageinfo2.hpp>

#include <optional>
#include <string>

class QDomDocument;
class QIODevice;

namespace vesk
{

class PackageInfo;

/// Reads the manifest in the file at \p path (UTF-8).
///
/// Throws std::runtime_error when the file cannot be opened ("Could not open PATH for reading.") or
/// is not well-formed ("Syntax error in PATH:LINE:COLUMN: WHY", both from 1). A manifest beyond the
/// limits that PackageInfo::loadFromManifestFile() names is treated as not well-formed; external
/// entities are never read. The message thrown is also logged as an error in the category
/// "vesk.package.info", which exists as soon as the library is loaded; its level does not affect
/// what is thrown. May be called from any thread.
VESKPACKAGE_EXPORT PackageInfo2 loadManifest(const std::string& path);

/// Reads a manifest like loadManifest(), but logs nothing, and does not throw for a bad manifest.
/// On success replaces \p info and returns true; on failure fills \p error and returns false; the
/// other one is unchanged. A file that cannot be read to its end is an error here, whereas
/// loadManifest() uses the part that it could read. May be called from any thread.
/// \{

/// Reads the file at \p path (UTF-8).
VESKPACKAGE_EXPORT bool readManifestFile(const std::string& path, PackageInfo2& info,
                                         LoadError& error);
/// Reads an open device from its current position to its end, like a file, and leaves it open.
VESKPACKAGE_EXPORT bool readManifestDevice(QIODevice& device, PackageInfo2& info, LoadError& error);
/// Reads the text of a manifest, up to the first NUL byte, with namespace processing, as
/// PackageInfo::readManifestText() does.
VESKPACKAGE_EXPORT bool readManifestText(const std::string& text, PackageInfo2& info,
                                         LoadError& error);
/// Fills both records from one parse of a manifest: adds to \p package as
/// PackageInfo::readManifestDevice() does, and replaces \p info. On failure both are unchanged.
VESKPACKAGE_EXPORT bool readManifestDevice(QIODevice& device, PackageInfo& package,
                                           PackageInfo2& info, LoadError& error);
/// Adds to \p package as PackageInfo::readManifestDevice() and readManifestText() do, and makes \p web
/// the web content that loadManifest() would store, the only thing that a package has no place for; none
/// when there is none. It takes no longer than to fill the package. On failure both are unchanged.
/// \{
VESKPACKAGE_EXPORT bool readManifestDevice(QIODevice& device, PackageInfo& package,
                                           std::optional<WebInfo>& web, LoadError& error);
VESKPACKAGE_EXPORT bool readManifestText(const std::string& text, PackageInfo& package,
                                         std::optional<WebInfo>& web, LoadError& error);
/// \}
/// \}

/// Reads a manifest from a parsed document, whatever the name of its root; a document without a
/// root gives an empty manifest. Never fails for the document's content: missing attributes give
/// empty texts, unknown elements are skipped, and of repeated sections only the last is used. In
/// lists of names, descriptions or languages, every child is an entry: a comment gives an empty
/// text under an empty language, or an empty language. The tree is walked recursively, so do not
/// pass a document from an unguarded parse of an untrusted file.
VESKPACKAGE_EXPORT PackageInfo2 loadXmlDocument(const QDomDocument& document);

} // namespace vesk

#endif
