// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_LOADERROR_HPP
#define PACKAGE_LOADERROR_HPP

#include <string>

namespace vesk
{

/// Why a manifest could not be read, and where in it. Operations that take a LoadError change it
/// only when they fail, and then set all of its members.
///
/// \code
/// std::cerr << error.path << ':' << error.line << ':' << error.column << ": " << error.message;
/// \endcode
struct LoadError
{
  /// Of the file; empty where the manifest came from a text, or from a device that is no file.
  std::string path;
  /// One line, without the path and the place.
  std::string message;
  /// From 1; 0 when the text is not to blame: the file cannot be opened, or cannot be read to its
  /// end.
  int line = 0;
  /// From 1, in UTF-16 code units; 0 when the line is 0.
  int column = 0;
  /// Whether the manifest would cost too much to parse (PackageInfo::loadFromManifestFile() names
  /// the limits), rather than being malformed.
  bool isBeyondLimits = false;
};

} // namespace vesk

#endif
