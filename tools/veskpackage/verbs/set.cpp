// SPDX-License-Identifier: Apache-2.0
#include "verbs/verbs.hpp"

namespace tool
{

using vesk::edit::FieldPath;

ExitCode setFields(const SetOptions& options)
{
  std::vector<std::pair<FieldPath, std::string>> assignments;
  for (const std::string& assignment : options.assignments)
  {
    assignments.push_back(vesk::edit::parseAssignment(assignment));
  }
  const auto change = [&assignments](vesk::edit::Manifest& fields)
  {
    for (const auto& [path, value] : assignments)
    {
      setField(fields, path, value);
    }
  };
  return rewriteManifests(options.inputs, options.target,
                          [&change](const Manifest& manifest, std::ostream& complaints)
                          { return withChange(manifest, change, complaints); });
}

ExitCode unsetFields(const UnsetOptions& options)
{
  std::vector<FieldPath> paths;
  for (const std::string& field : options.fields)
  {
    paths.push_back(vesk::edit::parseFieldPath(field));
  }
  const auto change = [&paths](vesk::edit::Manifest& fields) { unsetFields(fields, paths); };
  return rewriteManifests(options.inputs, options.target,
                          [&change](const Manifest& manifest, std::ostream& complaints)
                          { return withChange(manifest, change, complaints); });
}

} // namespace tool
