// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_MANIFEST_HPP
#define EDIT_MANIFEST_HPP

#include <edit/export.hpp>
#include <edit/fieldpath.hpp>
#include <package/loaderror.hpp>
#include <package/packageinfo.hpp>
#include <vesk/anyvalue.hpp>
#include <vesk/typesystem.hpp>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vesk
{
namespace edit
{

/// All that a manifest holds for those who read it. To the type system it is a struct with the
/// members of the package and, behind them, "web", so that paths lead to both: `version`,
/// `web.path`.
struct Manifest
{
  PackageInfo package;
  AnyValue web; ///< a WebInfo, or nothing
};

/// Reads the bytes of a manifest file with both readers. On failure fills \p error and gives none.
/// Nothing is logged.
VESKPACKAGE_EDIT_EXPORT std::optional<Manifest> readManifest(const std::string& bytes,
                                                             LoadError& error);

/// Reads the text of a manifest, up to the first NUL byte, as PackageInfo::readManifestText() does, and
/// else like readManifest().
VESKPACKAGE_EDIT_EXPORT std::optional<Manifest> readManifestText(const std::string& text,
                                                                 LoadError& error);

/// The bytes of a new manifest file: what PackageInfo::saveToManifestFile() writes, and the web content,
/// where \p web is some. What XML cannot carry is left out of both.
VESKPACKAGE_EDIT_EXPORT std::string writeManifest(const PackageInfo& package,
                                                  const AnyValue& web = {});

/// Writes the package's report, and the web content where there is some.
VESKPACKAGE_EDIT_EXPORT std::ostream& operator<<(std::ostream& out, const Manifest& manifest);

/// Sets each part that \p path stands for, as setAt() does; a step to web content that is not there
/// makes it. Throws FieldError, and may have set some of the parts then.
VESKPACKAGE_EDIT_EXPORT void setField(Manifest& manifest, const FieldPath& path,
                                      const std::string& text);

/// Unsets all parts that the paths stand for, as unsetAt() does; indexes are those before anything is
/// removed. Throws FieldError, also where a path that stands for one part only leads to none; then some
/// parts may be unset.
VESKPACKAGE_EDIT_EXPORT void unsetFields(Manifest& manifest, const std::vector<FieldPath>& paths);

} // namespace edit

template <>
VESKPACKAGE_EDIT_EXPORT TypeInterface* typeOf<edit::Manifest>();

} // namespace vesk

#endif
