// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_USAGEMESSAGE_HPP
#define TOOLS_VESKPACKAGE_USAGEMESSAGE_HPP

#include <CLI/CLI.hpp>

#include <string>

namespace tool
{

/// What is wrong with a command line, and which verb or option may have been meant.
std::string usageMessage(const CLI::App* app, const CLI::Error& error);

} // namespace tool

#endif
