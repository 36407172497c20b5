// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_VERBS_VERBS_HPP
#define TOOLS_VESKPACKAGE_VERBS_VERBS_HPP

#include "exitcode.hpp"
#include "files/batch.hpp"
#include "files/rewriting.hpp"

#include <check/manifestcheck.hpp>
#include <edit/fieldlist.hpp>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tool
{

/// Each verb of the program with its options. Results go to standard output, complaints to standard
/// error. A file "-" is standard input or output.

enum class Format
{
  Text,   ///< for people
  Json,   ///< for programs; of several files one value a line
  Variant ///< the form in which the robot's modules get a package
};

struct ShowOptions
{
  Inputs inputs;
  Format format = Format::Text;
};
/// Prints each manifest.
ExitCode showManifests(const ShowOptions& options);

struct CheckOptions
{
  Inputs inputs;
  std::string format = "text"; ///< of findingFormats(), on standard output
  std::vector<std::pair<std::string, std::string>> outputs; ///< further formats, and their files
  std::map<std::string, vesk::check::Severity> severities;
  bool isStrict = false;                 ///< warnings count as errors
  std::optional<std::string> policyFile; ///< for all manifests; empty: none for any
  std::string baseline;                  ///< a file; empty: none
  std::string baselineToWrite;           ///< a file; empty: none
  bool isQuiet = false;
  bool isColored = false;
  std::optional<bool> hasExcerpts; ///< without it, on a terminal
  std::string root;                ///< see WriterOptions
  bool isMending = false;          ///< the files, before what is left is reported
  bool looksUpFiles = false;       ///< paths of each manifest in its folder; not of standard input
  std::string packageFolder; ///< where those of all manifests are looked up; empty for nowhere
};
/// Prints what is wrong with each manifest.
ExitCode checkManifests(const CheckOptions& options);
/// Prints how each manifest would be mended, as a difference.
ExitCode showMends(const CheckOptions& options);
/// Prints all rules, or what one of them means.
/// \{
ExitCode listRules();
ExitCode explainRule(const std::string& tag);
/// \}

struct GetOptions
{
  Inputs inputs;
  Format format = Format::Text;
  std::vector<std::string> fields; ///< paths, also to every element of a list
};
/// Prints fields of each manifest, in their order.
ExitCode getFields(const GetOptions& options);

struct SetOptions
{
  Inputs inputs;
  Target target;
  std::vector<std::string> assignments; ///< FIELD=VALUE
};
/// Changes fields of each manifest, and nothing else in its text.
ExitCode setFields(const SetOptions& options);

struct UnsetOptions
{
  Inputs inputs;
  Target target;
  std::vector<std::string> fields;
};
/// Removes fields from each manifest, and nothing else from its text.
ExitCode unsetFields(const UnsetOptions& options);

struct FmtOptions
{
  Inputs inputs;
  Target target;
  std::optional<std::string> step; ///< of indentation; the manifest's own without it
  bool isCanonical = false;        ///< written anew from the package instead
  bool isForced = false;           ///< written anew also where something is lost
};
/// Changes the layout of manifests, and nothing else.
ExitCode formatManifests(const FmtOptions& options);

struct TrimOptions
{
  Inputs inputs;
  Target target;
  bool isForced = false; ///< also where all texts are dropped
};
/// Strips manifests down to their description languages.
ExitCode trimManifests(const TrimOptions& options);

struct DiffOptions
{
  std::string left; ///< a manifest, or a folder when the other is one, too
  std::string right;
  Format format = Format::Text;
};
/// Prints in which fields two manifests differ, or the manifests at the same place in two folders.
ExitCode diffManifests(const DiffOptions& options);

struct NewOptions
{
  std::string uuid; ///< empty: a new one
  std::string name; ///< empty: as the folder is called
  std::vector<std::string> languages{"en_US"};
  std::vector<std::string> behaviors; ///< their paths
  std::string output = "-";
  bool isForced = false; ///< also over a file that exists
};
/// Writes a manifest to begin with. Its values need to be without fault.
ExitCode newManifest(const NewOptions& options);
/// What is wrong with a text that a manifest is to hold; empty when that is nothing.
std::string faultInText(const std::string& text);

/// Answers an editor on standard input and output, as its language server. The exit code is
/// NegativeResult when the editor goes without having asked for the end.
ExitCode serveEditor();

/// Prints every field that a path can lead to, and what it is.
ExitCode listFields(Format format);
/// What a field is, in one or two lines.
std::vector<std::string> wordsFor(const vesk::edit::ListedField& field);

} // namespace tool

#endif
