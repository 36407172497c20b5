// SPDX-License-Identifier: Apache-2.0
#include "complaint.hpp"
#include "manifestfile.hpp"
#include "verbs.hpp"

ExitCode trim(const TrimOptions& options)
{
  return forEachManifest(
      options.inputs,
      [&options](Manifest& manifest, std::ostream& out, std::ostream& complaints)
      {
        if (manifest.package.descriptionLanguages().empty() && !options.target.isForced)
        {
          complain(complaints, manifest.name,
                   "not trimmed: it has no description languages, so that all texts would be "
                   "dropped; --force does it all the same");
          return NegativeResult;
        }
        manifest.package.trimExtraInfo();
        return put(manifest, manifestOf(manifest.package), options.target, out, complaints);
      });
}
