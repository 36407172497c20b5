// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_REPLACING_HPP
#define TOOLS_VESKPACKAGE_FILES_REPLACING_HPP

#include <functional>
#include <string>

namespace tool
{

/// Asked at the last moment: why a file must not be replaced; empty when it may be.
using Objection = std::function<std::string()>;

/// Replaces a file by one with \p content, as a whole or not at all, or makes it. One that is replaced
/// keeps its mode, and a symbolic link to it stays one. Returns why that failed; empty when it did
/// not.
std::string replaceFile(const std::string& path, const std::string& content,
                        const Objection& objection = {});

/// Writes \p content into what is there already, such as a device or pipe. Returns as replaceFile().
std::string writeInto(const std::string& path, const std::string& content);

} // namespace tool

#endif
