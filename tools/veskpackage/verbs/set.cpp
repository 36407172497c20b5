// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"
#include "verbs/verbs.hpp"

#include <edit/fieldvalue.hpp>
#include <edit/json.hpp>

namespace tool
{

using vesk::edit::FieldError;
using vesk::edit::FieldPath;
using vesk::edit::toJson;
using vesk::edit::toText;
using vesk::edit::valueAt;

namespace
{
using Assignments = std::vector<std::pair<FieldPath, std::string>>;

/// The first field that was set but differs once written and read again; empty when there is none.
std::string notKept(const vesk::PackageInfo& edited, const vesk::PackageInfo& written,
                    const Assignments& assignments)
{
  for (const auto& [path, value] : assignments)
  {
    try
    {
      if (toJson(valueAt(vesk::AnyConstReference(edited), path), -1) !=
          toJson(valueAt(vesk::AnyConstReference(written), path), -1))
      {
        return toText(path);
      }
    }
    catch (const FieldError&) // it is not there any more
    {
      return toText(path);
    }
  }
  return {};
}
} // namespace

ExitCode setFields(const SetOptions& options)
{
  Assignments assignments;
  for (const std::string& assignment : options.assignments)
  {
    assignments.push_back(vesk::edit::parseAssignment(assignment));
  }
  return forEachManifest(
      options.inputs,
      [&](Manifest& manifest, std::ostream& out, std::ostream& complaints)
      {
        try
        {
          for (const auto& [path, value] : assignments)
          {
            vesk::edit::setAt(vesk::AnyReference(manifest.fields.package), path, value);
          }
        }
        catch (const FieldError& error)
        {
          complain(complaints, manifest.name, error.what());
          return NegativeResult;
        }
        const std::string lost =
            notKept(manifest.fields.package, packageIn(manifestOf(manifest.fields.package)), assignments);
        if (!lost.empty())
        {
          complain(complaints, manifest.name, lost + ": a manifest cannot hold this value");
          return NegativeResult;
        }
        return writeManifest(manifest, {"-", true, options.isForced}, out, complaints);
      });
}

} // namespace tool
