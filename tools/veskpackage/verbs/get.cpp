// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"
#include "output/jsonline.hpp"
#include "verbs/verbs.hpp"

#include <edit/fieldvalue.hpp>

namespace tool
{

using vesk::AnyConstReference;
using vesk::edit::FieldPath;

namespace
{
void printValue(std::ostream& out, const Manifest& manifest, const FieldPath& path,
                const AnyConstReference& value, const GetOptions& options)
{
  if (options.format == Format::Json)
  {
    out << R"({"file":)" << jsonLine(manifest.name) << R"(,"field":)" << jsonLine(toText(path))
        << R"(,"value":)" << jsonLine(value) << "}\n";
    return;
  }
  out << (options.inputs.areMany() ? manifest.name + ": " : "")
      << (value.is<std::string>() ? value.as<std::string>() : jsonLine(value)) << '\n';
}

ExitCode printFields(std::ostream& out, std::ostream& complaints, const Manifest& manifest,
                     const std::vector<FieldPath>& fields, const GetOptions& options)
{
  ExitCode code = Done;
  const auto print = [&](const FieldPath& path, const AnyConstReference& value)
  { printValue(out, manifest, path, value, options); };
  const auto miss = [&](const vesk::edit::FieldError& error)
  {
    complain(complaints, manifest.name, error.what());
    code = NegativeResult;
  };
  for (const FieldPath& field : fields)
  {
    visitAt(AnyConstReference(manifest.fields), field, print, miss);
  }
  return code;
}
} // namespace

ExitCode getFields(const GetOptions& options)
{
  std::vector<FieldPath> fields;
  for (const std::string& field : options.fields)
  {
    fields.push_back(vesk::edit::parseFieldPath(field));
  }
  return forEachManifest(options.inputs,
                         [&](Manifest& manifest, std::ostream& out, std::ostream& complaints)
                         { return printFields(out, complaints, manifest, fields, options); });
}

} // namespace tool
