// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_FILELOCATION_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_FILELOCATION_HPP

#include <string>

namespace tool
{

/// The path of a file below a folder, with "/" only between names; the absolute path of a file that
/// is elsewhere. An empty folder is the working directory. Links are not followed.
std::string pathBelow(const std::string& folder, const std::string& file);

/// A path as it stands in a URI: with percent signs for all but letters, digits and -._~/.
std::string uriOf(const std::string& path);

} // namespace tool

#endif
