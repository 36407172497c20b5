// SPDX-License-Identifier: Apache-2.0
// The options of the verb check.
#include "commandline.hpp"
#include "commonoptions.hpp"
#include "policy/severities.hpp"

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
      ->excludes(baseline)
      ->option_text("FILE");
}
} // namespace

void CommandLine::addCheck()
{
  CLI::App* const verb = app.add_subcommand(
      "check", "Tell what is wrong with manifests, also what the readers pass over in silence");
  addInputs(*verb, checkOptions.inputs, "Manifests to check");
  addFormat(*verb, checkOptions.format, false,
            "text (a line for each finding, and a summary), or json (a line for each manifest)");
  verb->add_flag("--strict", checkOptions.isStrict, "Fail for warnings as well");
  verb->add_option("--override", overrides,
                   "Report what the rule TAG finds as off, hint, warning or error instead")
      ->option_text("TAG=SEVERITY")
      ->allow_extra_args(false);
  addPolicy(*verb, checkOptions);
  verb->add_option("--package", checkOptions.packageFolder,
                   "Look up the paths in the manifest in the package's folder")
      ->check(CLI::ExistingDirectory)
      ->option_text("FOLDER");
  verb->add_flag("-q,--quiet", checkOptions.isQuiet, "Report no hints and print no summary");
  verb->add_option("--color", color, "auto (the default; heeds NO_COLOR), always or never")
      ->check(CLI::IsMember({"auto", "always", "never"}))
      ->option_text("WHEN");
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
        for (const std::string& text : overrides)
        {
          const auto [tag, severity] = overrideIn(text);
          checkOptions.severities[tag] = severity;
        }
        checkOptions.isColored = isColored(color);
        code = checkManifests(checkOptions);
      });
}

} // namespace tool
