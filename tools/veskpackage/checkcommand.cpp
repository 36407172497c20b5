// SPDX-License-Identifier: Apache-2.0
// The options of the verb check.
#include "commandline.hpp"
#include "commonoptions.hpp"
#include "output/filelocation.hpp"
#include "output/findingwriter.hpp"
#include "policy/severities.hpp"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace tool
{

using vesk::check::Severity;

namespace
{
bool isColored(const std::string& color)
{
  const char* const noColor = std::getenv("NO_COLOR");
  const bool isWanted = noColor == nullptr || *noColor == '\0';
  return color == "always" || (color == "auto" && isWanted && isatty(STDOUT_FILENO) != 0);
}

/// "tag=severity"
std::pair<std::string, Severity> overrideIn(const std::string& text)
{
  const std::size_t equals = text.find('=');
  const std::string tag = text.substr(0, equals);
  try
  {
    return {tag, severityFor(tag, equals == std::string::npos ? "" : text.substr(equals + 1))};
  }
  catch (const std::invalid_argument& fault)
  {
    throw CLI::ValidationError(std::string("--override: ") + fault.what(),
                               CLI::ExitCodes::ValidationError);
  }
}

void addPolicy(CLI::App& verb, CheckOptions& options)
{
  CLI::Option* const config =
      verb.add_option("--config", options.policyFile,
                      "Take severities, strictness and excluded paths from FILE, instead of from "
                      "veskpackage.toml in the folder of each manifest or the nearest above")
          ->check(faultIn)
          ->option_text("FILE");
  verb.add_flag_callback(
          "--no-config", [&options] { options.policyFile = ""; }, "Take them from no file")
      ->excludes(config);
  CLI::Option* const baseline =
      verb.add_option(
              "--baseline", options.baseline,
              "Neither report nor count what is in FILE, which --write-baseline has written")
          ->check(faultIn)
          ->option_text("FILE");
  verb.add_option("--write-baseline", options.baselineToWrite,
                  "Write what is found to FILE instead of reporting it")
      ->check(faultIn)
      ->check([](const std::string& name)
              { return name == "-" ? "standard output has the findings" : ""; })
      ->excludes(baseline)
      ->option_text("FILE");
}

/// "format=file"
std::pair<std::string, std::string> outputIn(const std::string& text)
{
  const std::vector<std::string> formats = findingFormats();
  const std::size_t equals = text.find('=');
  const std::string format = text.substr(0, equals);
  const std::string file = equals == std::string::npos ? std::string() : text.substr(equals + 1);
  require(!file.empty() && std::find(formats.begin(), formats.end(), format) != formats.end(),
          "--output: " + text + " is not one of " + CLI::detail::join(formats, "=FILE, ") +
              "=FILE");
  require(file != "-", "--output: what goes to standard output is said with --format");
  return {format, file};
}

void requireFilesOnce(const std::vector<std::pair<std::string, std::string>>& outputs)
{
  std::vector<std::string> files(outputs.size());
  std::transform(outputs.begin(), outputs.end(), files.begin(),
                 [](const auto& output) { return pathBelow("", output.second); });
  requireEachOnce("--output", files);
}
} // namespace

void CommandLine::addCheck()
{
  CLI::App* const verb = app.add_subcommand(
      "check", "Tell what is wrong with manifests, also what the readers pass over in silence");
  addInputs(*verb, checkOptions.inputs, "Manifests to check");
  const std::vector<std::string> formats = findingFormats();
  verb->add_option("--format", checkOptions.format,
                   "text (a line for each finding, and a summary; the default), json (a line for "
                   "each manifest), sarif (2.1.0, for services that show results of analyses), "
                   "github (annotations from a workflow), or junit (a test for each manifest)")
      ->check(CLI::IsMember(formats))
      ->option_text("FORMAT");
  verb->add_option("--output", outputs,
                   "Write the same to FILE as well, in this format; any number of times")
      ->option_text("FORMAT=FILE")
      ->allow_extra_args(false);
  verb->add_option("--root", checkOptions.root,
                   "Paths in sarif and github are relative to FOLDER, not the working directory")
      ->check(CLI::ExistingDirectory)
      ->option_text("FOLDER");
  verb->add_flag("--strict", checkOptions.isStrict, "Fail for warnings as well");
  verb->add_option("--override", overrides,
                   "Report what the rule TAG finds as off, hint, warning or error instead")
      ->option_text("TAG=SEVERITY")
      ->allow_extra_args(false);
  addPolicy(*verb, checkOptions);
  CLI::Option* const fix = verb->add_flag(
      "--fix", checkOptions.isMending,
      "Mend what can surely be mended, write over the files, and report what is left");
  verb->add_flag("--dry-run", showsMends,
                 "With --fix, write nothing; print as a unified difference what would change "
                 "instead of what is found, and exit with 1 if anything")
      ->needs(fix)
      ->excludes("--format", "--output", "--baseline", "--write-baseline");
  CLI::Option* const files =
      verb->add_flag("--files", checkOptions.looksUpFiles,
                     "Look up the paths in each manifest in its folder; not of standard input");
  verb->add_option("--package", checkOptions.packageFolder,
                   "Look up the paths in the manifest in the package's folder")
      ->check(CLI::ExistingDirectory)
      ->excludes(files)
      ->option_text("FOLDER");
  verb->add_flag("-q,--quiet", checkOptions.isQuiet, "Report no hints and print no summary");
  verb->add_option("--color", color, "auto (the default; heeds NO_COLOR), always or never")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->option_text("WHEN");
  CLI::Option* const excerpt = verb->add_flag_callback(
      "--excerpt", [this] { checkOptions.hasExcerpts = true; },
      "Show in text what each finding is about; so it is anyway on a terminal");
  verb->add_flag_callback(
          "--no-excerpt", [this] { checkOptions.hasExcerpts = false; }, "Do not show that")
      ->excludes(excerpt);
  verb->add_flag("--list-rules", listsRules, "List the rules, and check nothing");
  verb->add_option("--explain", explained, "Say what the rule TAG means, and check nothing")
      ->option_text("TAG");
  addExample(*verb, "veskpackage check --strict --jobs 4 packages/");
  verb->callback(
      [this, verb]
      {
        if (listsRules)
        {
          code = listRules();
          return;
        }
        if (verb->count("--explain") != 0)
        {
          require(vesk::check::findRule(explained) != nullptr,
                  "--explain: there is no rule \"" + explained + "\"; --list-rules lists them");
          code = explainRule(explained);
          return;
        }
        requireFiles(checkOptions.inputs);
        const std::vector<std::string>& named = checkOptions.inputs.files;
        require(!checkOptions.isMending || showsMends ||
                    std::find(named.begin(), named.end(), "-") == named.end(),
                "--fix: standard input cannot be written over; --dry-run shows the difference");
        for (const std::string& text : overrides)
        {
          const auto [tag, severity] = overrideIn(text);
          checkOptions.severities[tag] = severity;
        }
        for (const std::string& text : outputs)
        {
          checkOptions.outputs.push_back(outputIn(text));
        }
        requireFilesOnce(checkOptions.outputs);
        checkOptions.isColored = isColored(color);
        code = showsMends ? showMends(checkOptions) : checkManifests(checkOptions);
      });
}

} // namespace tool
