// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_DIAGNOSTICS_HPP
#define TOOLS_VESKPACKAGE_LSP_DIAGNOSTICS_HPP

#include "lsp/manuscript.hpp"

#include <string>

namespace tool::lsp
{

/// A finding of a manifest as a Diagnostic. \p rulesUri is that of the document with the explanations
/// of the rules; empty where there is none. Its `data` has the version of the manifest, and the number
/// of the finding among those of that version.
Json diagnosticOf(const Manuscript& manuscript, const vesk::check::Finding& finding,
                  const std::string& rulesUri);

/// Those of all findings; none where it is no manifest, or nothing is
/// written yet.
Json diagnosticsOf(const Manuscript& manuscript, const std::string& rulesUri);

} // namespace tool::lsp

#endif
