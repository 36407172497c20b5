// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"
#include "verbs/verbs.hpp"

#include <edit/fieldvalue.hpp>
#include <edit/json.hpp>
#include <edit/membername.hpp>

namespace tool
{

using vesk::edit::FieldPath;
using vesk::edit::toJson;

namespace
{
std::string shown(const vesk::AnyConstReference& value, Format format)
{
  return format == Format::Text && value.is<std::string>() ? value.as<std::string>()
                                                           : toJson(value, -1, vesk::edit::friendlyName);
}
} // namespace

ExitCode getField(const GetOptions& options)
{
  const FieldPath path = vesk::edit::parseFieldPath(options.field);
  return forEachManifest(options.inputs,
                         [&](Manifest& manifest, std::ostream& out, std::ostream& complaints)
                         {
                           try
                           {
                             const vesk::AnyConstReference value = vesk::edit::valueAt(
                                 vesk::AnyConstReference(manifest.fields), path);
                             if (options.format == Format::Json)
                             {
                               out << R"({"file":)"
                                   << toJson(vesk::AnyConstReference(manifest.name), -1)
                                   << R"(,"value":)" << toJson(value, -1, vesk::edit::friendlyName) << "}\n";
                             }
                             else
                             {
                               out << (options.inputs.areMany() ? manifest.name + ": " : "")
                                   << shown(value, options.format) << '\n';
                             }
                             return Done;
                           }
                           catch (const vesk::edit::FieldError& error)
                           {
                             complain(complaints, manifest.name, error.what());
                             return NegativeResult;
                           }
                         });
}

} // namespace tool
