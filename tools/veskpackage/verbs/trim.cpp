// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"
#include "verbs/verbs.hpp"

namespace tool
{

ExitCode trimManifests(const TrimOptions& options)
{
  return rewriteManifests(
      options.inputs, options.target,
      [&options](const Manifest& manifest, std::ostream& complaints) -> std::optional<std::string>
      {
        const vesk::PackageInfo& package = manifest.fields.package;
        const bool dropsAll = package.descriptionLanguages().empty() ||
                              (package.supportedLanguages().empty() && package.hasBehavior());
        if (dropsAll && !options.isForced)
        {
          complain(
              complaints, manifest.name,
              "not trimmed: it lacks description or supported languages, so that all texts would "
              "be dropped; --force does it all the same");
          return std::nullopt;
        }
        return withChange(
            manifest, [](vesk::edit::Manifest& fields) { fields.package.trimExtraInfo(); },
            complaints, vesk::edit::CommentEntries::Stay);
      });
}

} // namespace tool
