// SPDX-License-Identifier: Apache-2.0
#include "commandline.hpp"

#include "commonoptions.hpp"
#include "files/arguments.hpp"
#include "usagemessage.hpp"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tool
{
namespace
{
CLI::Option* addOutput(CLI::App& verb, Target& target, const std::string& insteadOf)
{
  return verb.add_option("-o,--output", target.output, "Write to FILE instead of " + insteadOf)
      ->option_text("FILE");
}

/// \p note is what else there is to say about it.
void addInPlace(CLI::App& verb, Target& target, const std::string& note)
{
  verb.add_flag("-i,--in-place", target.isInPlace,
                "Write over the file itself, whole or not at all; its mode is kept" + note)
      ->excludes("--output");
}

void addTarget(CLI::App& verb, Target& target)
{
  addOutput(verb, target, "standard output");
  addInPlace(verb, target, "");
}

void addDryRun(CLI::App& verb, Target& target)
{
  verb.add_flag("--dry-run", target.isShownOnly,
                "Write nothing; print as a unified difference what would change")
      ->excludes("--output", "--in-place");
}

/// For verbs that write over the files unless they are told otherwise.
void addTargetInPlace(CLI::App& verb, Target& target)
{
  addOutput(verb, target, "over the file itself");
  addInPlace(verb, target, "; so it is anyway without --output");
  addDryRun(verb, target);
}

/// Divides what stands for FILE... FIELD...
void takeFields(Inputs& inputs, std::vector<std::string>& fields)
{
  Arguments arguments = filesAndFields(inputs.files);
  const bool hasFiles = !arguments.files.empty() || !inputs.filesFrom.empty();
  require(hasFiles || arguments.others.empty(),
          "FILE or --files-from is required; there is no file " +
              (arguments.others.empty() ? std::string() : arguments.others.front()));
  inputs.files = std::move(arguments.files);
  fields = std::move(arguments.others);
  requireFiles(inputs);
  require(!fields.empty(), "FIELD is required behind the files");
}

/// Divides what stands for FILE... FIELD=VALUE...
void takeAssignments(Inputs& inputs, std::vector<std::string>& assignments)
{
  Arguments arguments = filesAndAssignments(inputs.files);
  const auto isNone = [](const std::string& text) { return text.find('=') == std::string::npos; };
  require(!arguments.others.empty() &&
              std::none_of(arguments.others.begin(), arguments.others.end(), isNone),
          "FIELD=VALUE is required behind the files");
  inputs.files = std::move(arguments.files);
  assignments = std::move(arguments.others);
  requireFiles(inputs);
}

void requireOneOutput(const Inputs& inputs, const Target& target)
{
  requireFiles(inputs);
  const bool isOne = target.isInPlace || target.isShownOnly || !inputs.areMany();
  for (const std::string& file : inputs.files) // one that is none was meant as a field
  {
    std::error_code unknown;
    require(isOne || file == "-" || std::filesystem::exists(file, unknown),
            "there is no file " + file);
  }
  require(isOne, "several files need --in-place");
}

/// For verbs that write over the files unless they are told otherwise.
void chooseTarget(const CLI::App& verb, const Inputs& inputs, Target& target)
{
  target.isInPlace = verb.count("--output") == 0;
  require(target.isInPlace || !inputs.areMany(), "several files cannot be written to one");
}

} // namespace

CommandLine::CommandLine()
    : app("Shows, checks, edits and compares the manifests of robot application packages.",
          "veskpackage")
{
  app.set_version_flag("--version", std::string("veskpackage ") + VESKPACKAGE_VERSION);
  app.require_subcommand(1);
  app.failure_message(usageMessage);
  std::string footer = "FILE is a manifest; - stands for standard input or output.\nExit codes:";
  for (std::size_t i = 0; i < exitCodeMeanings.size(); ++i)
  {
    footer += "\n  " + std::to_string(i) + "  " + exitCodeMeanings.at(i);
  }
  app.footer(footer);
  addShow();
  addCheck();
  addGet();
  addSet();
  addUnset();
  addFmt();
  addTrim();
  addDiff();
  addFields();
  addNew();
  addLsp();
}

void CommandLine::addShow()
{
  CLI::App* const verb =
      app.add_subcommand("show", "Print what manifests hold, as a report or otherwise");
  addInputs(*verb, showOptions.inputs, "Manifests to print");
  addFormat(*verb, showOptions.format, true,
            "text (the report, the default), json (all fields and the web content; of several "
            "manifests one line each), or variant (as the robot's modules get it; [] without a "
            "uuid)");
  addExample(*verb, "veskpackage show --format json manifest.xml");
  verb->callback(
      [this]
      {
        requireFiles(showOptions.inputs);
        code = showManifests(showOptions);
      });
}

void CommandLine::addGet()
{
  CLI::App* const verb = app.add_subcommand("get", "Print fields of manifests");
  addInputs(*verb, getOptions.inputs,
            "Manifests, and behind them fields, as in version, 'behaviors[0].path' or "
            "'behaviors[*].path'; what exists, contains a / or ends in .xml is a manifest",
            "FILE...FIELD");
  addFormat(*verb, getOptions.format, false,
            "text (texts as they are, anything else as json; the default), or json (file, "
            "field and value, a line each)");
  addExample(*verb, "veskpackage get manifest.xml version 'behaviors[*].tags.en_US[1]'");
  verb->callback(
      [this]
      {
        takeFields(getOptions.inputs, getOptions.fields);
        code = getFields(getOptions);
      });
}

void CommandLine::addSet()
{
  CLI::App* const verb =
      app.add_subcommand("set", "Change fields of manifests, and write over the files");
  addInputs(*verb, setOptions.inputs,
            "Manifests, and FIELD=VALUE any number of times behind them; the name of a manifest "
            "with a = starts with ./, ../ or /",
            "FILE...ASSIGNMENT");
  addTargetInPlace(*verb, setOptions.target);
  addExample(*verb, "veskpackage set manifest.xml version=1.3 names.fr_FR=Bonjour");
  verb->callback(
      [this, verb]
      {
        takeAssignments(setOptions.inputs, setOptions.assignments);
        chooseTarget(*verb, setOptions.inputs, setOptions.target);
        code = setFields(setOptions);
      });
}

void CommandLine::addUnset()
{
  CLI::App* const verb =
      app.add_subcommand("unset", "Remove fields of manifests, and write over the files");
  addInputs(
      *verb, unsetOptions.inputs,
      "Manifests, and behind them fields: a text, an entry of a map, an element of a list, or "
      "a whole map or list",
      "FILE...FIELD");
  addTargetInPlace(*verb, unsetOptions.target);
  addExample(*verb, "veskpackage unset manifest.xml author 'behaviors[*].names.fr_FR'");
  verb->callback(
      [this, verb]
      {
        takeFields(unsetOptions.inputs, unsetOptions.fields);
        chooseTarget(*verb, unsetOptions.inputs, unsetOptions.target);
        code = unsetFields(unsetOptions);
      });
}

void CommandLine::addFmt()
{
  CLI::App* const verb = app.add_subcommand(
      "fmt", "Lay manifests out: lines, indentation, blanks and quotes, and nothing else; prints "
             "them unless told otherwise");
  addInputs(*verb, fmtOptions.inputs, "Manifests to read");
  addTarget(*verb, fmtOptions.target);
  verb->add_flag("--check", fmtOptions.target.isShownOnly,
                 "Write nothing; print as a unified difference what would change, and exit with 1 "
                 "if anything")
      ->excludes("--in-place", "--output");
  CLI::Option* const canonical =
      verb->add_flag("--canonical", fmtOptions.isCanonical,
                     "Write manifests anew as the library does, unless comments, unknown elements "
                     "and the like are lost");
  verb->add_flag("--force", fmtOptions.isForced,
                 "With --canonical, write also when something is lost")
      ->needs(canonical);
  verb->add_option_function<std::string>(
          "--indent",
          [this](const std::string& width)
          { fmtOptions.step = width == "tab" ? "\t" : std::string(std::stoul(width), ' '); },
          "Indent by so many blanks, or by a tab, instead of as the manifest does for the most "
          "part")
      ->check(CLI::IsMember({"1", "2", "3", "4", "5", "6", "7", "8", "tab"}))
      ->option_text("WIDTH")
      ->excludes(canonical);
  addExample(*verb, "veskpackage fmt --check manifest.xml");
  verb->callback(
      [this]
      {
        requireOneOutput(fmtOptions.inputs, fmtOptions.target);
        code = formatManifests(fmtOptions);
      });
}

void CommandLine::addTrim()
{
  CLI::App* const verb = app.add_subcommand(
      "trim", "Strip manifests down to names and descriptions in their description languages, and "
              "to tags and sentences in their supported ones; prints them unless told otherwise");
  addInputs(*verb, trimOptions.inputs, "Manifests to read");
  addTarget(*verb, trimOptions.target);
  addDryRun(*verb, trimOptions.target);
  verb->add_flag("--force", trimOptions.isForced, "Also when all texts are dropped");
  addExample(*verb, "veskpackage trim manifest.xml -o trimmed.xml");
  verb->callback(
      [this]
      {
        requireOneOutput(trimOptions.inputs, trimOptions.target);
        code = trimManifests(trimOptions);
      });
}

void CommandLine::addDiff()
{
  CLI::App* const verb = app.add_subcommand(
      "diff",
      "Compare two manifests, or all in two folders, by what they mean, field by field; exits "
      "with 1 when they differ");
  verb->add_option("A", diffOptions.left, "The one manifest or folder")->required()->check(faultIn);
  verb->add_option("B", diffOptions.right, "The other manifest or folder")
      ->required()
      ->check(faultIn);
  addFormat(*verb, diffOptions.format, false, "text (a line for each difference), or json");
  addExample(*verb, "veskpackage diff old.xml new.xml");
  verb->callback(
      [this]
      {
        requireOneStandardInput({diffOptions.left, diffOptions.right});
        code = diffManifests(diffOptions);
      });
}

void CommandLine::addFields()
{
  CLI::App* const verb =
      app.add_subcommand("fields", "List every field of a manifest, and what it is");
  addFormat(*verb, fieldsFormat, false, "text (the default), or json");
  addExample(*verb, "veskpackage fields | grep -A 2 behaviors");
  verb->callback([this] { code = listFields(fieldsFormat); });
}

void CommandLine::addNew()
{
  CLI::App* const verb =
      app.add_subcommand("new", "Write a manifest to begin with, which has no faults");
  const auto addText = [verb](const std::string& name, auto& value, const std::string& kind,
                              const std::string& meaning)
  {
    return verb->add_option(name, value, meaning)
        ->check(faultInText)
        ->option_text(kind)
        ->allow_extra_args(false);
  };
  addText("--uuid", newOptions.uuid, "UUID", "Its identifier (a new one by default)");
  addText("--name", newOptions.name, "TEXT",
          "What it is called (as the folder of the manifest by default)");
  addText("--language", newOptions.languages, "CODE",
          "A language of its content, names and descriptions, any number of times (en_US by "
          "default)");
  addText("--behavior", newOptions.behaviors, "PATH",
          "The folder of a behavior in the package, any number of times");
  verb->add_option("-o,--output", newOptions.output, "Write to FILE instead of standard output")
      ->check(faultIn)
      ->option_text("FILE");
  verb->add_flag("--force", newOptions.isForced, "Write over a file that exists");
  addExample(*verb, "veskpackage new --name 'My guide' --behavior greeting -o guide.xml");
  verb->callback(
      [this]
      {
        requireEachOnce("--language", newOptions.languages);
        requireEachOnce("--behavior", newOptions.behaviors);
        code = newManifest(newOptions);
      });
}

void CommandLine::addLsp()
{
  CLI::App* const verb = app.add_subcommand(
      "lsp", "Be the language server of an editor, on standard input and output");
  verb->add_flag("--stdio", "For editors that say so; there is no other way");
  addExample(*verb, "veskpackage lsp");
  verb->callback([this] { code = serveEditor(); });
}

} // namespace tool
