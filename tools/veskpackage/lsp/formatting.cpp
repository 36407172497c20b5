// SPDX-License-Identifier: Apache-2.0
#include "lsp/formatting.hpp"

#include "lsp/protocol/errors.hpp"

#include <edit/manifest.hpp>
#include <package/loaderror.hpp>
#include <source/formatting.hpp>
#include <vesk/anyvalue.hpp>

namespace tool::lsp
{

Json formattingOf(const Manuscript& manuscript)
{
  const vesk::source::Document& document = manuscript.document();
  vesk::LoadError ignored;
  const auto before = vesk::edit::readManifest(manuscript.text(), ignored);
  if (document.error() || !before)
  {
    return nullptr;
  }
  const std::vector<vesk::source::Edit> edits = vesk::source::formatting(document);
  const auto after = vesk::edit::readManifest(vesk::source::apply(document, edits), ignored);
  if (!after || vesk::AnyConstReference(*after) != vesk::AnyConstReference(*before))
  {
    throw RequestError(ErrorCode::RequestFailed,
                       "not formatted: the readers would take it for another package");
  }
  return manuscript.textEdits(edits);
}

} // namespace tool::lsp
