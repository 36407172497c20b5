// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_COMMONOPTIONS_HPP
#define TOOLS_VESKPACKAGE_COMMONOPTIONS_HPP

#include "verbs/verbs.hpp"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace tool
{

/// What is wrong with the name of a file.
std::string faultIn(const std::string& name);

/// Adds what files a verb works on. \p name is what the arguments are called, FILE and what may come
/// behind.
void addInputs(CLI::App& verb, Inputs& inputs, const std::string& what,
               const std::string& name = "FILE");

void addFormat(CLI::App& verb, Format& format, bool hasVariant, const std::string& meaning);

void addExample(CLI::App& verb, const std::string& example);

/// What is wrong with how a verb is used, beyond what single options say.
/// \{
void require(bool condition, const std::string& what);
void requireOneStandardInput(const std::vector<std::string>& files);
void requireFiles(const Inputs& inputs);
/// \}

} // namespace tool

#endif
