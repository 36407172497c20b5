// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"
#include "verbs/verbs.hpp"

#include <edit/fieldvalue.hpp>
#include <edit/json.hpp>
#include <edit/membername.hpp>

namespace tool
{

using vesk::AnyConstReference;
using vesk::edit::FieldPath;

namespace
{
std::string jsonOf(const AnyConstReference& value)
{
  return vesk::edit::toJson(value, -1, vesk::edit::friendlyName);
}

void printValue(std::ostream& out, const Manifest& manifest, const FieldPath& path,
                const AnyConstReference& value, const GetOptions& options)
{
  if (options.format == Format::Json)
  {
    const std::string field = toText(path);
    out << R"({"file":)" << jsonOf(AnyConstReference(manifest.name)) << R"(,"field":)"
        << jsonOf(AnyConstReference(field)) << R"(,"value":)" << jsonOf(value) << "}\n";
    return;
  }
  out << (options.inputs.areMany() ? manifest.name + ": " : "")
      << (value.is<std::string>() ? value.as<std::string>() : jsonOf(value)) << '\n';
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
                         {
                           ExitCode code = Done;
                           const auto print =
                               [&](const FieldPath& path, const AnyConstReference& value)
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
                         });
}

} // namespace tool
