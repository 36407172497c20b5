// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"
#include "output/complaint.hpp"
#include "verbs/verbs.hpp"

namespace tool
{

ExitCode trimManifests(const TrimOptions& options)
{
  return forEachManifest(
      options.inputs,
      [&options](Manifest& manifest, std::ostream& out, std::ostream& complaints)
      {
        const vesk::PackageInfo& package = manifest.fields.package;
        const bool dropsAll = package.descriptionLanguages().empty() ||
                              (package.supportedLanguages().empty() && package.hasBehavior());
        if (dropsAll && !options.target.isForced)
        {
          complain(
              complaints, manifest.name,
              "not trimmed: it lacks description or supported languages, so that all texts would "
              "be dropped; --force does it all the same");
          return NegativeResult;
        }
        manifest.fields.package.trimExtraInfo();
        return writeManifest(manifest, options.target, out, complaints);
      });
}

} // namespace tool
