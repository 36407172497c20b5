// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"
#include "output/unifieddiff.hpp"
#include "verbs/verbs.hpp"

namespace tool
{

ExitCode formatManifests(const FmtOptions& options)
{
  return forEachManifest(options.inputs,
                         [&options](Manifest& manifest, std::ostream& out, std::ostream& complaints)
                         {
                           if (options.isCheck)
                           {
                             const std::string formatted = manifestOf(manifest.fields.package);
                             const std::string original = manifest.bytes;
                             printUnifiedDiff(out, manifest.name, original,
                                              manifest.name + " (formatted)", formatted);
                             return formatted == original ? Done : NegativeResult;
                           }
                           return writeManifest(manifest, options.target, out, complaints);
                         });
}

} // namespace tool
