// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"
#include "output/finding.hpp"
#include "verbs/verbs.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iostream>

namespace tool
{

using vesk::check::Finding;
using vesk::check::Rule;
using vesk::check::Severity;

namespace
{
/// How many findings of each severity there were in how many files; counted by several threads.
struct Totals
{
  std::atomic<std::size_t> files = 0;
  std::atomic<std::size_t> errors = 0;
  std::atomic<std::size_t> warnings = 0;
  std::atomic<std::size_t> hints = 0;

  void count(const std::vector<Finding>& findings)
  {
    ++files;
    for (const Finding& finding : findings)
    {
      ++(finding.severity == Severity::Error     ? errors
         : finding.severity == Severity::Warning ? warnings
                                                 : hints);
    }
  }
};

std::string counted(std::size_t number, const std::string& what)
{
  return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
}

nlohmann::ordered_json jsonOf(const std::string& name, const std::vector<Finding>& findings)
{
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Finding& finding : findings)
  {
    list.push_back({{"severity", nameOf(finding.severity)},
                    {"tag", finding.rule->tag},
                    {"message", finding.message},
                    {"line", finding.begin.line},
                    {"column", finding.begin.column},
                    {"place", finding.place}});
  }
  return {{"file", name}, {"findings", std::move(list)}};
}

/// A file that no reader reads weighs more than one with faults.
ExitCode codeOf(const std::vector<Finding>& findings, bool isStrict)
{
  ExitCode code = Done;
  for (const Finding& finding : findings)
  {
    const bool isFault =
        finding.severity == Severity::Error || (isStrict && finding.severity == Severity::Warning);
    const bool isUnread = finding.rule->severity == Severity::Error;
    code = std::max(code, isUnread ? FileTrouble : isFault ? NegativeResult : Done);
  }
  return code;
}

void printAll(std::ostream& out, const std::string& name, const std::vector<Finding>& findings,
              const CheckOptions& options)
{
  if (options.format == Format::Json)
  {
    out << jsonOf(name, findings)
               .dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
        << '\n';
    return;
  }
  for (const Finding& finding : findings)
  {
    printFinding(out, name, finding, options.isColored);
  }
}

/// The folder in which paths in a manifest are looked up; empty when they are not.
std::string folderOf(const std::string& file, const CheckOptions& options)
{
  if (!options.looksUpFiles || file == "-")
  {
    return options.packageFolder;
  }
  const std::string folder = std::filesystem::path(file).parent_path().string();
  return folder.empty() ? "." : folder;
}

std::vector<Finding> findingsIn(const std::string& file, const CheckOptions& options)
{
  const vesk::check::Options asked{options.severities, folderOf(file, options)};
  std::string trouble;
  const std::optional<std::string> bytes = readBytes(file, trouble);
  if (!bytes)
  {
    return {{vesk::check::findRule("unreadable"), Severity::Error, trouble, {}, {}, {}}};
  }
  std::vector<Finding> findings = vesk::check::checkBytes(*bytes, asked).findings;
  if (options.isQuiet)
  {
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                                  [](const Finding& finding)
                                  { return finding.severity == Severity::Hint; }),
                   findings.end());
  }
  return findings;
}
} // namespace

ExitCode checkManifests(const CheckOptions& options)
{
  Totals totals;
  const ExitCode code =
      forEachFile(options.inputs,
                  [&](const std::string& file, std::ostream& out, std::ostream&)
                  {
                    const std::vector<Finding> findings = findingsIn(file, options);
                    totals.count(findings);
                    printAll(out, file == "-" ? "<stdin>" : file, findings, options);
                    return codeOf(findings, options.isStrict);
                  });
  if (options.format == Format::Text && !options.isQuiet)
  {
    std::cout << counted(totals.files, "file") << ": " << counted(totals.errors, "error") << ", "
              << counted(totals.warnings, "warning") << ", " << counted(totals.hints, "hint")
              << std::endl;
  }
  return code;
}

ExitCode listRules()
{
  for (const Rule& rule : vesk::check::rules())
  {
    std::cout << rule.tag << " (" << nameOf(rule.severity) << ")\n";
  }
  return Done;
}

ExitCode explainRule(const std::string& tag)
{
  const Rule& rule = *vesk::check::findRule(tag);
  std::cout << rule.tag << " (" << nameOf(rule.severity) << ")\n" << rule.explanation << '\n';
  return Done;
}

} // namespace tool
