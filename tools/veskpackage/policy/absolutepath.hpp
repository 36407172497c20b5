// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_POLICY_ABSOLUTEPATH_HPP
#define TOOLS_VESKPACKAGE_POLICY_ABSOLUTEPATH_HPP

#include <string>

namespace tool
{

/// A path from the root without "." and "..", as text: links are not followed, except before a "..",
/// which leads out of where they point. Does not ask the file system about a path without "..".
std::string absolutePath(const std::string& path);

} // namespace tool

#endif
