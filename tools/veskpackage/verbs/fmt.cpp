// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"
#include "output/complaint.hpp"
#include "output/unifieddiff.hpp"
#include "verbs/verbs.hpp"

#include <source/formatting.hpp>
#include <source/lines.hpp>

#include <stdexcept>

namespace tool
{
namespace
{
namespace source = vesk::source;

/// The manifest with another layout. When it cannot have one, says why and gives none.
std::optional<std::string> laidOut(const Manifest& manifest, const std::optional<std::string>& step,
                                   std::ostream& complaints)
{
  const source::Document document = source::Document::parse(manifest.bytes);
  if (const auto& error = document.error())
  {
    const source::Place place = source::Lines(document.text()).placeOf(error->range.begin);
    complain(complaints,
             manifest.name + ':' + std::to_string(place.line) + ':' + std::to_string(place.column),
             error->message + "; --canonical rewrites it as the readers take it");
    return std::nullopt;
  }
  try
  {
    std::string result = source::apply(document, source::formatting(document, step));
    vesk::edit::Manifest read;
    vesk::LoadError ignored;
    if (vesk::edit::readManifest(result, read, ignored) &&
        vesk::AnyConstReference(read) == vesk::AnyConstReference(manifest.fields))
    {
      return result;
    }
    complain(complaints, manifest.name,
             "not formatted: the readers would take it for another package");
  }
  catch (const std::runtime_error& refusal)
  {
    complain(complaints, manifest.name, refusal.what());
  }
  return std::nullopt;
}

/// As a terminal shows it; the bytes where nobody knows what they stand for.
std::string inUtf8(const std::string& bytes)
{
  const source::Decoded decoded = source::decode(bytes, source::encodingOf(bytes));
  return !decoded.isKnown || decoded.faultyByte ? bytes : decoded.text;
}
} // namespace

ExitCode formatManifests(const FmtOptions& options)
{
  return forEachManifest(
      options.inputs,
      [&options](Manifest& manifest, std::ostream& out, std::ostream& complaints)
      {
        const std::optional<std::string> formatted =
            options.isCanonical ? manifestOf(manifest.fields.package)
                                : laidOut(manifest, options.step, complaints);
        if (!formatted)
        {
          return NegativeResult;
        }
        const std::string& original = manifest.bytes;
        if (options.isCheck)
        {
          printUnifiedDiff(out, manifest.name, inUtf8(original), manifest.name + " (formatted)",
                           inUtf8(*formatted));
          return *formatted == original ? Done : NegativeResult;
        }
        const bool loses = options.isCanonical && *formatted != original;
        if (loses && !options.target.isForced && refuseToLose(manifest, complaints))
        {
          return NegativeResult;
        }
        return writeContent(*formatted, manifest, options.target, out, complaints);
      });
}

} // namespace tool
