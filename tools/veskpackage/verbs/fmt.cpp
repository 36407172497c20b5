// SPDX-License-Identifier: Apache-2.0
#include "output/complaint.hpp"
#include "output/finding.hpp"
#include "verbs/verbs.hpp"

#include <source/formatting.hpp>
#include <source/lines.hpp>

#include <QBuffer>

#include <stdexcept>
#include <string_view>

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
    complain(complaints, manifest.name, source::Lines(document.text()).placeOf(error->range.begin),
             error->message + "; --canonical --force rewrites it as the readers take it");
    return std::nullopt;
  }
  try
  {
    std::string result = source::apply(document, source::formatting(document, step));
    vesk::LoadError ignored;
    const std::optional<vesk::edit::Manifest> read = vesk::edit::readManifest(result, ignored);
    if (read && vesk::AnyConstReference(*read) == vesk::AnyConstReference(manifest.fields))
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

/// Complains of what \p manifest has that would be lost when its package is written; false when there
/// is nothing.
bool refuseToLose(const Manifest& manifest, std::ostream& complaints)
{
  vesk::check::Options options;
  for (const vesk::check::Rule& rule : vesk::check::rules())
  {
    const bool isListed = rule.isLost || std::string_view(rule.tag) == "root-name"; // gets another
    options.severities[rule.tag] =
        isListed ? vesk::check::Severity::Warning : vesk::check::Severity::Off;
  }
  QBuffer bytes;
  bytes.setData(QByteArray::fromStdString(manifest.bytes));
  bytes.open(QIODevice::ReadOnly);
  const auto losses = vesk::check::checkDevice(bytes, options);
  for (const vesk::check::Finding& loss : losses)
  {
    printFinding(complaints, manifest.name, loss, false);
  }
  // Where the readers are lax, they pass over something: of an attribute that stands twice, one value.
  const source::Document document = source::Document::parse(manifest.bytes);
  const auto& laxity = document.error();
  if (laxity)
  {
    complain(complaints, manifest.name, source::Lines(document.text()).placeOf(laxity->range.begin),
             laxity->message);
  }
  const bool losesAny = laxity || !losses.empty();
  if (losesAny)
  {
    complain(complaints, manifest.name,
             "not rewritten: what is listed above would be lost; --force rewrites it all the same");
  }
  return losesAny;
}

/// The manifest as the library writes its package. When that loses something, says what and gives
/// none, unless it is forced to.
std::optional<std::string> canonical(const Manifest& manifest, bool isForced,
                                     std::ostream& complaints)
{
  std::string written = vesk::edit::writeManifest(manifest.fields.package);
  const bool isRefused =
      written != manifest.bytes && !isForced && refuseToLose(manifest, complaints);
  return isRefused ? std::nullopt : std::optional(std::move(written));
}
} // namespace

ExitCode formatManifests(const FmtOptions& options)
{
  return rewriteManifests(
      options.inputs, options.target,
      [&options](const Manifest& manifest, std::ostream& complaints)
      {
        return options.isCanonical
                   ? canonical(manifest, options.isForced || options.target.isShownOnly, complaints)
                   : laidOut(manifest, options.step, complaints);
      },
      NegativeResult);
}

} // namespace tool
