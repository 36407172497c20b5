// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_MANIFESTFILE_HPP
#define TOOLS_MANIFESTFILE_HPP

#include <package/packageinfo.hpp>

#include <string>

/// Loads the manifest in \p file, or from standard input when that is "-". When it cannot be
/// loaded, prints why and gives false.
bool load(vesk::PackageInfo& package, const std::string& file);

/// Writes the manifest to \p file, or to standard output when that is "-". When it cannot be
/// written wholly, prints why and gives false.
bool save(const vesk::PackageInfo& package, const std::string& file);

#endif
