// SPDX-License-Identifier: Apache-2.0
#include "complaint.hpp"
#include "fieldvalue.hpp"
#include "verbs.hpp"

ExitCode set(const SetOptions& options)
{
  std::vector<std::pair<FieldPath, std::string>> assignments;
  for (const std::string& assignment : options.assignments)
  {
    assignments.push_back(parseAssignment(assignment));
  }
  return forEachManifest(options.inputs,
                         [&](Manifest& manifest, std::ostream& out, std::ostream& complaints)
                         {
                           try
                           {
                             for (const auto& [path, value] : assignments)
                             {
                               setAt(vesk::AnyReference(manifest.package), path, value);
                             }
                           }
                           catch (const FieldError& error)
                           {
                             complain(complaints, manifest.name, error.what());
                             return NegativeResult;
                           }
                           return put(manifest, manifestOf(manifest.package),
                                      {"-", true, options.isForced}, out, complaints);
                         });
}
