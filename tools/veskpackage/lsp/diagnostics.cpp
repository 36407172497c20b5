// SPDX-License-Identifier: Apache-2.0
#include "lsp/diagnostics.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace tool::lsp
{

using vesk::check::Finding;
using vesk::check::Rule;
using vesk::check::Severity;

namespace
{
int severityOf(const Finding& finding)
{
  constexpr int error = 1;
  constexpr int warning = 2;
  constexpr int information = 3;
  return finding.severity == Severity::Error     ? error
         : finding.severity == Severity::Warning ? warning
                                                 : information;
}

/// Whether the readers pass over what the rule finds, so that it might as well not be there.
bool isPassedOver(const Rule& rule)
{
  constexpr std::array<std::string_view, 6> rules{"unknown-element",   "misplaced-element",
                                                  "unknown-attribute", "skipped-text",
                                                  "needless-repeat",   "repeated-permission"};
  return std::find(rules.begin(), rules.end(), rule.tag) != rules.end();
}
} // namespace

Json diagnosticOf(const Manuscript& manuscript, const Finding& finding, const std::string& rulesUri)
{
  constexpr int unnecessary = 1;
  Json diagnostic = {
      {"range", manuscript.rangeOf(finding)},
      {"severity", severityOf(finding)},
      {"code", finding.rule->tag},
      {"source", "veskpackage"},
      {"message", finding.message},
      {"data",
       {{"version", manuscript.version()}, {"finding", &finding - manuscript.findings().data()}}}};
  if (!rulesUri.empty())
  {
    diagnostic["codeDescription"] = {{"href", rulesUri + '#' + finding.rule->tag}};
  }
  if (isPassedOver(*finding.rule))
  {
    diagnostic["tags"] = Json::array({unnecessary});
  }
  return diagnostic;
}

Json diagnosticsOf(const Manuscript& manuscript, const std::string& rulesUri)
{
  Json diagnostics = Json::array();
  const bool isBlank = manuscript.text().find_first_not_of(" \t\r\n") == std::string::npos;
  if (!isBlank && manuscript.isManifest())
  {
    for (const Finding& finding : manuscript.findings())
    {
      diagnostics.push_back(diagnosticOf(manuscript, finding, rulesUri));
    }
  }
  return diagnostics;
}

} // namespace tool::lsp
