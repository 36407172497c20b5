// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_COMMANDLINE_HPP
#define TOOLS_VESKPACKAGE_COMMANDLINE_HPP

#include "exitcode.hpp"
#include "verbs/verbs.hpp"

#include <CLI/CLI.hpp>

#include <string>

namespace tool
{

/// The program's verbs and options: parses a command line and runs its verb, and is what help, man
/// pages and completion are made of.
class CommandLine
{
public:
  CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  CLI::App app;
  /// The exit code of the verb.
  ExitCode code = Done;

private:
  void addShow();
  void addCheck();
  void addGet();
  void addSet();
  void addUnset();
  void addFmt();
  void addTrim();
  void addDiff();
  void addFields();
  void addNew();
  void addLsp();

  ShowOptions showOptions;
  CheckOptions checkOptions;
  GetOptions getOptions;
  SetOptions setOptions;
  UnsetOptions unsetOptions;
  FmtOptions fmtOptions;
  TrimOptions trimOptions;
  DiffOptions diffOptions;
  Format fieldsFormat = Format::Text;
  NewOptions newOptions;
  std::vector<std::string> overrides;
  std::vector<std::string> outputs;
  std::string color = "auto";
  std::string explained;
  bool listsRules = false;
  bool showsMends = false;
};

} // namespace tool

#endif
