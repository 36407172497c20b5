// SPDX-License-Identifier: Apache-2.0
#include <check/checker.hpp>
#include <package/xml/manifesttree.hpp>
#include <package/xml/text.hpp>

namespace vesk::check
{
namespace
{
/// Checks a document; when there is none, returns one finding made from \p error.
std::vector<Finding> checkParsed(const std::optional<ManifestTree>& manifest,
                                 const LoadError& error, const Options& options)
{
  if (manifest)
  {
    return checkDocument(*manifest->inToolkit(), options);
  }
  const RuleId id = error.line == 0        ? RuleId::Unreadable
                    : error.isBeyondLimits ? RuleId::BeyondLimits
                                           : RuleId::NotWellFormed;
  Report report(options);
  if (report.count(id))
  {
    report.add(id, toQString(error.message), error.line, error.column);
  }
  return report.take();
}
} // namespace

std::vector<Finding> checkFile(const std::string& path, const Options& options)
{
  LoadError error;
  return checkParsed(parseFile(path, error, Parsers::Toolkit), error, options);
}

std::vector<Finding> checkDevice(QIODevice& device, const Options& options)
{
  LoadError error;
  return checkParsed(parseDevice(device, error, Parsers::Toolkit), error, options);
}

std::vector<Finding> checkText(const std::string& text, const Options& options)
{
  LoadError error;
  return checkParsed(parseManifest(text, error, Parsers::Toolkit), error, options);
}

std::vector<Finding> checkDocument(const QDomDocument& document, const Options& options)
{
  Report report(options);
  Checker(document, options, report).check();
  return report.take();
}

} // namespace vesk::check
