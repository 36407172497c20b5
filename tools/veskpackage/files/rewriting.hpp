// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_REWRITING_HPP
#define TOOLS_VESKPACKAGE_FILES_REWRITING_HPP

#include "files/manifestfile.hpp"

#include <edit/changes.hpp>

#include <functional>
#include <optional>
#include <ostream>
#include <string>

namespace tool
{

/// Where changed manifests are written to.
struct Target
{
  std::string output = "-"; ///< a file or standard output
  bool isInPlace = false;   ///< instead, in the place of the file that each was read from
  bool isShownOnly = false; ///< instead, as a difference to standard output
};

/// Makes the new bytes of a manifest. None where that is refused, after it has complained.
using Rewrite =
    std::function<std::optional<std::string>(const Manifest& manifest, std::ostream& complaints)>;

/// Writes what \p rewrite makes of each manifest to \p target. One from standard input goes to
/// standard output, and a file whose bytes stay the same is not touched. In place, nobody else's
/// change is lost; see updateFile(). \p ifDifferent is the code for a difference that is shown.
ExitCode rewriteManifests(const Inputs& inputs, const Target& target, const Rewrite& rewrite,
                          ExitCode ifDifferent = Done);

/// Changes the fields of a manifest by edits of its text.
std::optional<std::string>
withChange(const Manifest& manifest, const std::function<void(vesk::edit::Manifest&)>& change,
           std::ostream& complaints,
           vesk::edit::CommentEntries comments = vesk::edit::CommentEntries::Refuse);

} // namespace tool

#endif
