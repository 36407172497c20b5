// SPDX-License-Identifier: Apache-2.0
#include "files/mending.hpp"
#include "output/finding.hpp"
#include "output/reports.hpp"
#include "output/unifieddiff.hpp"
#include "policy/baseline.hpp"
#include "policy/policies.hpp"
#include "verbs/verbs.hpp"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace tool
{

using vesk::check::Finding;
using vesk::check::Rule;
using vesk::check::Severity;

namespace
{
/// The packages of one folder, to find those with the same uuid.
class Folder
{
public:
  /// The file before this one in the same folder that has the same uuid, if any.
  std::optional<std::string> sameBefore(const InputFile& file, const std::string& uuid)
  {
    if (file.folder != folder)
    {
      folder = file.folder;
      files.clear();
    }
    if (folder == 0 || uuid.empty())
    {
      return std::nullopt;
    }
    const auto [known, isNew] = files.emplace(uuid, file.path);
    return isNew ? std::nullopt : std::make_optional(known->second);
  }

private:
  std::size_t folder = 0;
  std::map<std::string, std::string> files; ///< by uuid
};

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

vesk::check::Options optionsFor(const std::string& file, const CheckOptions& options,
                                const Policy& policy)
{
  // What a baseline passes must not depend on what comes before it.
  constexpr std::size_t mostOfBaseline = 100000;
  vesk::check::Options asked{options.severities, folderOf(file, options)};
  asked.mostOfARule = options.baseline.empty() && options.baselineToWrite.empty()
                          ? asked.mostOfARule
                          : mostOfBaseline;
  asked.severities.insert(policy.severities.begin(), policy.severities.end()); // the others only
  return asked;
}

/// All that is found in a file alone.
std::shared_ptr<CheckedFile> checked(const std::string& file, const vesk::check::Options& asked)
{
  auto result = std::make_shared<CheckedFile>();
  result->name = file == "-" ? "<stdin>" : file;
  std::string trouble;
  std::optional<std::string> bytes = readBytes(file, trouble);
  if (!bytes)
  {
    result->findings = {
        {vesk::check::findRule("unreadable"), Severity::Error, trouble, {}, {}, {}}};
    return result;
  }
  result->bytes = std::move(*bytes);
  vesk::check::Checked found = vesk::check::checkBytes(result->bytes, asked);
  result->findings = std::move(found.findings);
  result->uuid = std::move(found.uuid);
  return result;
}

void insert(Finding finding, std::vector<Finding>& findings)
{
  const auto isBefore = [](const Finding& left, const Finding& right)
  {
    return std::tie(left.begin.line, left.begin.column) <
           std::tie(right.begin.line, right.begin.column);
  };
  const auto place = std::upper_bound(findings.begin(), findings.end(), finding, isBefore);
  findings.insert(place, std::move(finding));
}

void removeHints(std::vector<Finding>& findings)
{
  findings.erase(std::remove_if(findings.begin(), findings.end(),
                                [](const Finding& finding)
                                { return finding.severity == Severity::Hint; }),
                 findings.end());
}

/// The reports that are asked for, begun.
Reports reportsFor(const CheckOptions& options, const Baseline& baseline)
{
  WriterOptions asked;
  asked.moreSummary = [&baseline] { return baseline.summary(); };
  asked.hasSummary = !options.isQuiet;
  asked.root = options.root;
  WriterOptions printed = asked;
  printed.isColored = options.isColored;
  printed.hasExcerpts = options.hasExcerpts.value_or(isatty(STDOUT_FILENO) != 0);
  asked.hasExcerpts = options.hasExcerpts.value_or(false);

  Reports reports(findingWriter(options.format, printed));
  for (const auto& [format, file] : options.outputs)
  {
    reports.add(findingWriter(format, asked), file);
  }
  return reports;
}

/// Prints the difference that mending makes, and what no reader reads.
ExitCode showMends(const CheckedFile& file, const vesk::check::Options& asked, std::ostream& out,
                   std::ostream& complaints)
{
  if (codeOf(file.findings, false) == FileTrouble)
  {
    printFinding(complaints, file.name, file.findings.front(), false);
    return FileTrouble;
  }
  std::size_t mends = 0;
  const auto bytes = mended(file.name, file.bytes, asked, mends, complaints);
  if (bytes)
  {
    CheckedFile after;
    after.bytes = *bytes;
    printUnifiedDiff(out, file.name, std::string(file.text()), file.name + " (mended)",
                     std::string(after.text()));
  }
  return bytes && mends == 0 ? Done : NegativeResult;
}

/// What is left to be found in a file after it was mended.
std::shared_ptr<CheckedFile> mendedAndChecked(const std::string& file,
                                              const vesk::check::Options& asked,
                                              std::ostream& complaints)
{
  std::shared_ptr<CheckedFile> result = checked(file, asked);
  const bool isRead = codeOf(result->findings, false) != FileTrouble;
  if (isRead && !result->findings.empty()) // a mend may be among those that are left out
  {
    std::size_t mends = 0;
    const ExitCode code = mendFile(file, asked, mends, complaints);
    result = checked(file, asked);
    result->mended = mends;
    result->code = code;
  }
  return result;
}
} // namespace

ExitCode showMends(const CheckOptions& options)
{
  Policies policies(options.policyFile);
  const auto work = [&](const InputFile& file) -> Rest
  {
    const vesk::check::Options asked =
        optionsFor(file.path, options, *policies.policyOf(file.path));
    return [asked, result = checked(file.path, asked)](std::ostream& out, std::ostream& complaints)
    { return showMends(*result, asked, out, complaints); };
  };
  return forEachFileInOrder(options.inputs, work,
                            [&policies](const std::string& path)
                            { return policies.excludes(path); });
}

ExitCode checkManifests(const CheckOptions& options)
{
  Policies policies(options.policyFile);
  Baseline baseline(options.baseline, options.baselineToWrite);
  Reports reports = reportsFor(options, baseline);
  Folder folder;
  const auto work = [&](const InputFile& file) -> Rest
  {
    const std::shared_ptr<const Policy> policy = policies.policyOf(file.path);
    const vesk::check::Options asked = optionsFor(file.path, options, *policy);
    std::ostringstream troubles;
    const std::shared_ptr<CheckedFile> result = options.isMending
                                                    ? mendedAndChecked(file.path, asked, troubles)
                                                    : checked(file.path, asked);
    return [&, file, policy, asked, result, trouble = troubles.str()](std::ostream& out,
                                                                      std::ostream& complaints)
    {
      complaints << trouble;
      const std::optional<std::string> same = folder.sameBefore(file, result->uuid);
      auto repeated = same ? vesk::check::repeatedUuid(result->bytes, *same, asked) : std::nullopt;
      if (repeated)
      {
        insert(std::move(*repeated), result->findings);
      }
      if (options.isQuiet)
      {
        removeHints(result->findings);
      }
      baseline.take(file.path, result->findings);
      result->code =
          std::max(result->code, codeOf(result->findings, options.isStrict || policy->isStrict));
      reports.write(*result, out);
      return result->code;
    };
  };
  const ExitCode code =
      forEachFileInOrder(options.inputs, work,
                         [&policies](const std::string& path) { return policies.excludes(path); });
  const bool isSaved = options.baselineToWrite.empty() || baseline.save(std::cerr);
  return std::max({code, reports.end(), isSaved ? Done : FileTrouble});
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
