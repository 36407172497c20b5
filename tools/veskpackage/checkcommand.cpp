// SPDX-License-Identifier: Apache-2.0
// The options of the verb check.
#include "commandline.hpp"
#include "commonoptions.hpp"

#include <cstdlib>
#include <map>
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
  static const std::map<std::string, Severity> severities{{"off", Severity::Off},
                                                          {"hint", Severity::Hint},
                                                          {"warning", Severity::Warning},
                                                          {"error", Severity::Error}};
  const std::size_t equals = text.find('=');
  const std::string tag = text.substr(0, equals);
  require(vesk::check::findRule(tag) != nullptr,
          "--override: there is no rule \"" + tag + "\"; --list-rules lists them");
  require(vesk::check::findRule(tag)->severity != Severity::Error,
          "--override: " + tag + " is an error at all times, since nothing is read then");
  const auto severity =
      severities.find(equals == std::string::npos ? std::string() : text.substr(equals + 1));
  require(severity != severities.end(),
          "--override: " + tag + " needs =off, =hint, =warning or =error");
  return {tag, severity->second};
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
