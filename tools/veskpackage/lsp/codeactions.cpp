// SPDX-License-Identifier: Apache-2.0
#include "lsp/codeactions.hpp"

#include "lsp/elements.hpp"
#include "lsp/fixall.hpp"
#include "lsp/protocol/errors.hpp"
#include "lsp/translations.hpp"
#include "output/checkedfile.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace tool::lsp
{

namespace source = vesk::source;

using vesk::check::Finding;

namespace
{
constexpr const char* quickFix = "quickfix";
constexpr const char* rewriting = "refactor.rewrite";
constexpr const char* fixingAll = "source.fixAll.veskpackage";

/// Finds the actions of a request.
class CodeActions
{
public:
  CodeActions(const Manuscript& changed, const Json& requestParams)
      : manuscript(changed), params(requestParams),
        context(params.value("context", Json::object())),
        range(manuscript.rangeOf(params.value("range", Json::object())))
  {}

  Json find()
  {
    addMends();
    addFixAll();
    const source::Node* const element = elementAt(manuscript.document(), range.begin);
    if (element != nullptr && !manuscript.document().error())
    {
      addTranslations(*element);
      addRemoval(*element);
    }
    return std::move(actions);
  }

private:
  /// Whether the editor asks for actions of a kind.
  bool isWanted(const std::string& kind) const
  {
    const auto only = context.find("only");
    return only == context.end() || !only->is_array() ||
           std::any_of(only->begin(), only->end(),
                       [&kind](const Json& wanted)
                       {
                         const std::string outer =
                             wanted.is_string() ? wanted.get<std::string>() : "?";
                         return outer.empty() || kind == outer ||
                                kind.compare(0, outer.size() + 1, outer + '.') == 0;
                       });
  }

  Json& add(const char* kind, const std::string& title, const std::vector<source::Edit>& edits)
  {
    actions.push_back(
        {{"title", title}, {"kind", kind}, {"edit", manuscript.workspaceEdit(edits)}});
    return actions.back();
  }

  bool isInRange(const Finding& finding) const
  {
    return hasExactPlace(finding) && finding.begin.offset <= range.end &&
           finding.end.offset >= range.begin;
  }

  void addMends()
  {
    for (const Finding& finding : manuscript.findings())
    {
      if (isWanted(quickFix) && finding.mend && isInRange(finding))
      {
        Json& action = add(quickFix, finding.mend->title, finding.mend->edits);
        action["diagnostics"] = diagnosticsOf(finding);
        action["isPreferred"] = true;
      }
    }
  }

  /// Those of the editor's diagnostics that are a finding.
  Json diagnosticsOf(const Finding& finding) const
  {
    Json found = Json::array();
    const Json place = manuscript.rangeOf(finding);
    for (const Json& diagnostic : context.value("diagnostics", Json::array()))
    {
      if (diagnostic.is_object() && diagnostic.value("code", Json()) == finding.rule->tag &&
          diagnostic.value("range", Json()) == place)
      {
        found.push_back(diagnostic);
      }
    }
    return found;
  }

  void addFixAll()
  {
    if (isWanted(fixingAll))
    {
      const std::vector<source::Edit> edits = fixAll(manuscript);
      if (!edits.empty())
      {
        add(fixingAll, "mend all that can surely be mended", edits);
      }
    }
  }

  void addTranslations(const source::Node& innermost)
  {
    const source::Document& document = manuscript.document();
    for (const source::Node* list = &innermost; isWanted(rewriting) && list != nullptr;
         list = list->parent())
    {
      const std::vector<std::string> missing = missingLanguages(document, *list);
      if (!missing.empty())
      {
        std::string title = "add ";
        title.append(list->name()).append(" in ");
        for (const std::string& language : missing)
        {
          title.append(&language == &missing.front() ? "" : ", ").append(language);
        }
        add(rewriting, title, additionOf(missing, document, *list));
        return;
      }
    }
  }

  void addRemoval(const source::Node& element)
  {
    if (isWanted(rewriting) && element.parent() != nullptr)
    {
      source::Editor editor(manuscript.document());
      editor.remove(element);
      add(rewriting, "remove this \"" + std::string(element.name()) + '"', editor.edits());
    }
  }

  const Manuscript& manuscript;
  const Json& params;
  const Json context;
  const source::Range range;
  Json actions = Json::array();
};
} // namespace

Json codeActionKinds() { return {quickFix, rewriting, fixingAll}; }

bool takesCodeActions(const Client& client)
{
  return client.has("/textDocument/codeAction/codeActionLiteralSupport");
}

Json codeActionsFor(const Manuscript& manuscript, const Json& params)
{
  return takesCodeActions(manuscript.client()) ? CodeActions(manuscript, params).find()
                                               : Json::array();
}

} // namespace tool::lsp
