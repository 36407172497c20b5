// SPDX-License-Identifier: Apache-2.0
#include "lsp/rename.hpp"

#include "lsp/languageuses.hpp"
#include "lsp/protocol/errors.hpp"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace tool::lsp
{

namespace check = vesk::check;
namespace source = vesk::source;

namespace
{
source::Range rangeOf(const LanguageUse& use)
{
  return {static_cast<std::uint32_t>(use.begin),
          static_cast<std::uint32_t>(use.begin + use.code.size())};
}

const LanguageUse* useAt(const std::vector<LanguageUse>& uses, std::size_t offset)
{
  const auto found =
      std::find_if(uses.begin(), uses.end(),
                   [offset](const LanguageUse& use)
                   { return use.begin <= offset && offset <= use.begin + use.code.size(); });
  return found == uses.end() ? nullptr : &*found;
}

/// What the checker says of a code; empty when that is nothing.
std::string faultOf(const std::string& code)
{
  if (code.find_first_of("&<>\"'") != std::string::npos)
  {
    return "no code of a language has such characters";
  }
  const source::Document list = source::Document::parseText(
      "<package><supportedLanguages><language/></supportedLanguages></package>");
  source::Editor editor(list);
  try
  {
    editor.setText(*list.root()->firstChild()->firstChild(), code);
  }
  catch (const std::invalid_argument& refusal)
  {
    return refusal.what();
  }
  const std::set<std::string_view> rules{"language-form", "surrounding-blanks", "empty-language"};
  for (const check::Finding& finding : check::checkText(editor.apply()))
  {
    if (rules.count(finding.rule->tag) != 0)
    {
      return finding.message;
    }
  }
  return {};
}

/// A list that may have each code once, and has both; null when there is none.
const LanguageUse* collision(const std::vector<LanguageUse>& uses, std::string_view code,
                             std::string_view other)
{
  std::set<std::size_t> lists;
  for (const LanguageUse& use : uses)
  {
    if (use.code == code && hasKeyOfLanguage(*use.element))
    {
      lists.insert(use.listBegin);
    }
  }
  const auto found = std::find_if(uses.begin(), uses.end(),
                                  [&](const LanguageUse& use)
                                  { return use.code == other && lists.count(use.listBegin) != 0; });
  return found == uses.end() ? nullptr : &*found;
}

[[noreturn]] void refuseRename(const std::string& why)
{
  throw RequestError(ErrorCode::RequestFailed, why);
}
} // namespace

Json renamableAt(const Manuscript& manuscript, std::size_t offset)
{
  const std::vector<LanguageUse> uses = languageUsesIn(manuscript.text());
  const LanguageUse* const use = useAt(uses, offset);
  return use != nullptr ? Json{{"range", manuscript.rangeOf(rangeOf(*use))},
                               {"placeholder", std::string(use->code)}}
                        : Json();
}

Json renameAt(const Manuscript& manuscript, std::size_t offset, const std::string& newName)
{
  const std::vector<LanguageUse> uses = languageUsesIn(manuscript.text());
  const LanguageUse* const renamed = useAt(uses, offset);
  if (renamed == nullptr)
  {
    refuseRename("there is no code of a language here");
  }
  if (const auto& error = manuscript.document().error())
  {
    refuseRename("the manifest is not well-formed: " + error->message);
  }
  const std::string fault = faultOf(newName);
  if (!fault.empty())
  {
    refuseRename(fault);
  }
  const LanguageUse* const standing =
      newName == renamed->code ? nullptr : collision(uses, renamed->code, newName);
  if (standing != nullptr)
  {
    const source::Place place = manuscript.lines().placeOf(standing->begin);
    refuseRename('"' + std::string(standing->list) + "\" has \"" + newName +
                 "\" already, in line " + std::to_string(place.line));
  }
  std::vector<source::Edit> edits;
  for (const LanguageUse& use : uses)
  {
    if (use.code == renamed->code)
    {
      edits.push_back({rangeOf(use), newName});
    }
  }
  return manuscript.workspaceEdit(edits);
}

} // namespace tool::lsp
