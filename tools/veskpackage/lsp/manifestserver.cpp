// SPDX-License-Identifier: Apache-2.0
#include "lsp/manifestserver.hpp"

#include "lsp/codeactions.hpp"
#include "lsp/completion.hpp"
#include "lsp/diagnostics.hpp"
#include "lsp/folding.hpp"
#include "lsp/formatting.hpp"
#include "lsp/hover.hpp"
#include "lsp/links.hpp"
#include "lsp/rename.hpp"
#include "lsp/symbols.hpp"
#include "policy/filefault.hpp"
#include "policy/policies.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tool::lsp
{
namespace
{
/// What an editor can ask of a manifest that is open.
struct Feature
{
  const char* method;
  Json (*answer)(const Manuscript& manuscript, const Json& params);
};

std::size_t offsetIn(const Manuscript& manuscript, const Json& params)
{
  return manuscript.offsetOf(params.at("position"));
}

constexpr std::array features{
    Feature{"textDocument/formatting",
            [](const Manuscript& manuscript, const Json&) { return formattingOf(manuscript); }},
    Feature{"textDocument/hover", [](const Manuscript& manuscript, const Json& params)
            { return hoverAt(manuscript, offsetIn(manuscript, params)); }},
    Feature{"textDocument/completion", [](const Manuscript& manuscript, const Json& params)
            { return completionAt(manuscript, offsetIn(manuscript, params)); }},
    Feature{"textDocument/codeAction", [](const Manuscript& manuscript, const Json& params)
            { return codeActionsFor(manuscript, params); }},
    Feature{"textDocument/prepareRename", [](const Manuscript& manuscript, const Json& params)
            { return renamableAt(manuscript, offsetIn(manuscript, params)); }},
    Feature{"textDocument/rename",
            [](const Manuscript& manuscript, const Json& params)
            {
              return renameAt(manuscript, offsetIn(manuscript, params),
                              params.at("newName").get<std::string>());
            }},
    Feature{"textDocument/documentSymbol",
            [](const Manuscript& manuscript, const Json&) { return symbolsOf(manuscript); }},
    Feature{"textDocument/foldingRange",
            [](const Manuscript& manuscript, const Json&) { return foldingOf(manuscript); }},
    Feature{"textDocument/documentLink",
            [](const Manuscript& manuscript, const Json&) { return linksOf(manuscript); }}};

Json capabilities(const Client& client)
{
  constexpr int incremental = 2;
  return {{"positionEncoding", client.encoding() == PositionEncoding::Utf8 ? "utf-8" : "utf-16"},
          {"textDocumentSync", {{"openClose", true}, {"change", incremental}, {"save", true}}},
          {"documentFormattingProvider", true},
          {"hoverProvider", true},
          {"completionProvider", {{"triggerCharacters", Json::array({"<", "/", " ", "\"", "'"})}}},
          {"codeActionProvider",
           takesCodeActions(client) ? Json{{"codeActionKinds", codeActionKinds()}} : Json(false)},
          {"renameProvider", client.supports("/textDocument/rename/prepareSupport")
                                 ? Json{{"prepareProvider", true}}
                                 : Json(true)},
          {"documentSymbolProvider", true},
          {"workspaceSymbolProvider", true},
          {"foldingRangeProvider", true},
          {"documentLinkProvider", Json::object()}};
}

bool isPolicyFile(const std::string& uri)
{
  const std::string_view name = policyFileName;
  return uri.size() > name.size() &&
         uri.compare(uri.size() - name.size() - 1, std::string::npos, '/' + std::string(name)) == 0;
}

std::string uriIn(const Json& params)
{
  return params.at("textDocument").at("uri").get<std::string>();
}
} // namespace

ManifestServer::ManifestServer(Session& talk, std::string rulesDocument)
    : session(talk), rulesUri(std::move(rulesDocument)), manuscripts(client)
{
  session.onRequest("initialize", [this](const Json& params) { return initialize(params); });
  session.onNotification("initialized", [this](const Json&) { registerWatcher(); });
  session.onNotification("textDocument/didOpen", [this](const Json& params) { open(params); });
  session.onNotification("textDocument/didChange", [this](const Json& params) { change(params); });
  session.onNotification("textDocument/didSave", [this](const Json& params) { save(params); });
  session.onNotification("textDocument/didClose", [this](const Json& params) { close(params); });
  session.onNotification("workspace/didChangeWatchedFiles",
                         [this](const Json& params) { filesChanged(params); });
  session.onRequest("workspace/symbol", [this](const Json& params) { return symbols(params); });
  for (const Feature& feature : features)
  {
    session.onRequest(feature.method,
                      [this, &feature](const Json& params) -> Json
                      {
                        const Manuscript* const manuscript = manuscripts.find(uriIn(params));
                        if (manuscript == nullptr)
                        {
                          throw RequestError(ErrorCode::InvalidParams, "the document is not open");
                        }
                        return manuscript->isManifest() ? feature.answer(*manuscript, params)
                                                        : Json();
                      });
  }
}

Json ManifestServer::initialize(const Json& params)
{
  client = Client(params);
  const Json::json_pointer files("/initializationOptions/files");
  looksUpFiles = params.contains(files) && params.at(files) == true;
  return {{"capabilities", capabilities(client)},
          {"serverInfo", {{"name", "veskpackage"}, {"version", VESKPACKAGE_VERSION}}}};
}

void ManifestServer::registerWatcher()
{
  if (client.supports("/workspace/didChangeWatchedFiles/dynamicRegistration"))
  {
    const Json watcher = {{"globPattern", std::string("**/") + policyFileName}};
    session.request(
        "client/registerCapability",
        {{"registrations",
          Json::array({{{"id", "policies"},
                        {"method", "workspace/didChangeWatchedFiles"},
                        {"registerOptions", {{"watchers", Json::array({watcher})}}}}})}});
  }
}

void ManifestServer::open(const Json& params)
{
  try
  {
    Manuscript& opened = manuscripts.open(params.at("textDocument"));
    opened.checkWith(optionsFor(opened));
    checkLater(opened.uri());
  }
  catch (const RequestError& refusal)
  {
    session.show(MessageType::Warning, refusal.what());
  }
}

void ManifestServer::change(const Json& params)
{
  try
  {
    if (const Manuscript* const changed = manuscripts.change(params))
    {
      checkLater(changed->uri());
    }
  }
  catch (const RequestError& refusal)
  {
    session.show(MessageType::Warning, refusal.what());
    publish(uriIn(params), Json::object(), Json::array());
  }
}

void ManifestServer::save(const Json& params)
{
  const std::string uri = uriIn(params);
  if (isPolicyFile(uri))
  {
    checkAllLater();
  }
  else
  {
    checkLater(uri); // files that it names may be there now
  }
}

void ManifestServer::close(const Json& params)
{
  const std::string uri = uriIn(params);
  manuscripts.close(uri);
  publish(uri, Json::object(), Json::array());
}

void ManifestServer::filesChanged(const Json& params)
{
  const Json& changes = params.at("changes");
  if (std::any_of(changes.begin(), changes.end(),
                  [](const Json& change)
                  { return isPolicyFile(change.at("uri").get<std::string>()); }))
  {
    checkAllLater();
  }
}

Json ManifestServer::symbols(const Json& params)
{
  const auto query = params.at("query").get<std::string>();
  Json found = Json::array();
  for (const auto& [uri, open] : manuscripts)
  {
    const Manuscript& manuscript = *manuscripts.find(uri); // what the one before has made is let go
    addSymbolsOf(manuscript, query, found);
  }
  return found;
}

void ManifestServer::checkLater(const std::string& uri)
{
  if (std::find(unchecked.begin(), unchecked.end(), uri) == unchecked.end())
  {
    unchecked.push_back(uri);
  }
}

void ManifestServer::checkAllLater()
{
  toldFaults.clear();
  for (const auto& [uri, manuscript] : manuscripts)
  {
    checkLater(uri);
  }
}

bool ManifestServer::work()
{
  if (unchecked.empty())
  {
    return false;
  }
  const std::string uri = std::move(unchecked.front());
  unchecked.erase(unchecked.begin());
  if (Manuscript* const manuscript = manuscripts.find(uri))
  {
    manuscript->checkWith(optionsFor(*manuscript));
    publish(uri, {{"version", manuscript->version()}}, diagnosticsOf(*manuscript, rulesUri));
  }
  return true;
}

std::optional<vesk::check::Options> ManifestServer::optionsFor(const Manuscript& manuscript)
{
  vesk::check::Options options;
  options.packageFolder = looksUpFiles ? manuscript.folder() : std::string();
  if (manuscript.path().empty())
  {
    return options;
  }
  try
  {
    Policies policies; // read anew each time: they are small, and may have changed
    if (policies.excludes(manuscript.path()))
    {
      return std::nullopt;
    }
    options.severities = policies.policyOf(manuscript.path())->severities;
  }
  catch (const FileFault& fault)
  {
    std::string& told = toldFaults[fault.file];
    if (told != fault.what())
    {
      told = fault.what();
      session.show(MessageType::Error, told);
    }
  }
  return options;
}

void ManifestServer::publish(const std::string& uri, Json params, Json diagnostics)
{
  params["uri"] = uri;
  params["diagnostics"] = std::move(diagnostics);
  session.notify("textDocument/publishDiagnostics", params);
}

} // namespace tool::lsp
