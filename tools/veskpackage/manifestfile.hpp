// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_MANIFESTFILE_HPP
#define TOOLS_MANIFESTFILE_HPP

#include <package/manifest2/packageinfo2.hpp>
#include <package/packageinfo.hpp>

#include <string>

/// Loads the manifest in \p file, or from standard input when that is "-"; also as \p sections, when
/// that is given, which hold its web content. When it cannot be loaded, prints why and gives false.
bool load(vesk::PackageInfo& package, const std::string& file,
          vesk::PackageInfo2* sections = nullptr);

/// Writes the manifest to \p file, or to standard output when that is "-". When it cannot be
/// written wholly, prints why and gives false.
bool save(const vesk::PackageInfo& package, const std::string& file);

#endif
