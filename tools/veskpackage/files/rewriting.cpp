// SPDX-License-Identifier: Apache-2.0
#include "files/rewriting.hpp"

#include "files/updating.hpp"
#include "output/complaint.hpp"
#include "output/unifieddiff.hpp"

#include <source/encoding.hpp>

#include <QFileInfo>

#include <algorithm>

namespace tool
{

namespace source = vesk::source;

namespace
{
/// As a terminal shows it; the bytes where nobody knows what they stand for.
std::string inUtf8(const std::string& bytes)
{
  const source::Decoded decoded = source::decode(bytes, source::encodingOf(bytes));
  return !decoded.isKnown || decoded.faultyByte ? bytes : decoded.text;
}

bool isOutput(const std::string& file, const std::string& output)
{
  return output != "-" && // standard output, also where a file is called so
         QFileInfo(QString::fromStdString(file)) == QFileInfo(QString::fromStdString(output));
}

ExitCode rewriteInPlace(const std::string& file, const Rewrite& rewrite, std::ostream& complaints)
{
  ExitCode code = Done;
  const auto work = [&](const std::string& bytes) -> std::optional<std::string>
  {
    const std::optional<Manifest> manifest = parse(file, bytes, complaints);
    auto rewritten = manifest ? rewrite(*manifest, complaints) : std::nullopt;
    code = !manifest ? FileTrouble : !rewritten ? NegativeResult : Done;
    return rewritten;
  };
  const ExitCode written = updateFile(file, complaints, work);
  return std::max(code, written);
}

ExitCode rewriteElsewhere(const std::string& file, const Target& target, const Rewrite& rewrite,
                          ExitCode ifDifferent, std::ostream& out, std::ostream& complaints)
{
  const std::optional<Manifest> manifest = load(file, complaints);
  if (!manifest)
  {
    return FileTrouble;
  }
  const std::optional<std::string> rewritten = rewrite(*manifest, complaints);
  if (!rewritten)
  {
    return NegativeResult;
  }
  if (target.isShownOnly)
  {
    printUnifiedDiff(out, manifest->name, inUtf8(manifest->bytes), manifest->name + " (changed)",
                     inUtf8(*rewritten));
    return *rewritten == manifest->bytes ? Done : ifDifferent;
  }
  return writeFile(*rewritten, target.output, out, complaints) ? Done : FileTrouble;
}
} // namespace

ExitCode rewriteManifests(const Inputs& inputs, const Target& target, const Rewrite& rewrite,
                          ExitCode ifDifferent)
{
  return forEachFile(inputs,
                     [&](const std::string& file, std::ostream& out, std::ostream& complaints)
                     {
                       const bool isInPlace = file != "-" && !target.isShownOnly &&
                                              (target.isInPlace || isOutput(file, target.output));
                       return isInPlace ? rewriteInPlace(file, rewrite, complaints)
                                        : rewriteElsewhere(file, target, rewrite, ifDifferent, out,
                                                           complaints);
                     });
}

std::optional<std::string> withChange(const Manifest& manifest,
                                      const std::function<void(vesk::edit::Manifest&)>& change,
                                      std::ostream& complaints, vesk::edit::CommentEntries comments)
{
  try
  {
    vesk::edit::Manifest after = manifest.fields;
    change(after);
    return vesk::edit::changed(manifest.bytes, manifest.fields, after, comments);
  }
  catch (const vesk::edit::FieldError& error)
  {
    complain(complaints, manifest.name, error.what());
  }
  catch (const vesk::edit::Refusal& refusal)
  {
    refusal.place ? complain(complaints, manifest.name, *refusal.place, refusal.what())
                  : complain(complaints, manifest.name, refusal.what());
  }
  return std::nullopt;
}

} // namespace tool
