// SPDX-License-Identifier: Apache-2.0
// Compares the checker with the first reader: the checker has an error where the reader refuses a
// manifest, and finds all that is lost when the manifest is read and written.
#include "readback.hpp"
#include "support.hpp"

#include <check/manifestcheck.hpp>

#include <QBuffer>

#include <algorithm>
#include <fstream>

using vesk::check::Finding;
using vesk::check::Severity;

namespace
{
/// All rules, including those that are off by default.
vesk::check::Options everything()
{
  vesk::check::Options options;
  for (const vesk::check::Rule& rule : vesk::check::rules())
  {
    options.severities[rule.tag] = rule.severity == Severity::Off ? Severity::Hint : rule.severity;
  }
  return options;
}

void requireSound(const std::vector<Finding>& findings, bool isLoaded)
{
  const bool hasError =
      std::any_of(findings.begin(), findings.end(),
                  [](const Finding& finding) { return finding.severity == Severity::Error; });
  require(hasError != isLoaded, "an error, but a reader accepts, or none, but it refuses");
  for (const Finding& finding : findings)
  {
    const bool isOneLine = std::none_of(finding.message.begin(), finding.message.end(),
                                        [](char c) { return static_cast<unsigned char>(c) < ' '; });
    require(isOneLine && !finding.message.empty(), "a message of other than one line");
    require(finding.begin.line >= 0 && finding.begin.column >= 0, "a place outside of the text");
    require(vesk::check::findRule(finding.rule->tag) == finding.rule, "a rule of its own");
  }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  static const vesk::check::Options& options = *new auto(everything());
  const std::string text = textOf(data, size);
  vesk::PackageInfo fromText;
  requireSound(vesk::check::checkText(text, options), fromText.loadFromManifestContent(text));

  QBuffer device;
  device.setData(text.data(), static_cast<int>(text.size()));
  device.open(QIODevice::ReadOnly);
  const std::vector<Finding> findings = vesk::check::checkDevice(device, options);
  vesk::PackageInfo package;
  const bool isLoaded = loadFile(package, text);
  requireSound(findings, isLoaded);
  takeLogged();
  if (isLoaded && std::none_of(findings.begin(), findings.end(),
                               [](const Finding& finding) { return finding.rule->isLost; }))
  {
    requireEqual(vesk::AnyConstReference(package), vesk::AnyConstReference(writeAndRead(package)),
                 "lost without a finding");
  }
  return 0;
}
