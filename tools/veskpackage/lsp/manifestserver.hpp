// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_MANIFESTSERVER_HPP
#define TOOLS_VESKPACKAGE_LSP_MANIFESTSERVER_HPP

#include "lsp/manuscripts.hpp"
#include "lsp/protocol/client.hpp"
#include "lsp/protocol/session.hpp"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tool::lsp
{

/// Answers an editor of manifests.
class ManifestServer
{
public:
  /// \p talk must outlive it, and is not to be used before it is made. \p rulesDocument is the URI of
  /// the document that explains the rules; empty when there is none.
  ManifestServer(Session& talk, std::string rulesDocument);
  ManifestServer(const ManifestServer&) = delete;
  ManifestServer& operator=(const ManifestServer&) = delete;
  ~ManifestServer() = default;

  /// Checks one manifest that has changed, and publishes what was found; false when there is none.
  bool work();

private:
  Json initialize(const Json& params);
  void registerWatcher();
  void open(const Json& params);
  void change(const Json& params);
  void save(const Json& params);
  void close(const Json& params);
  void filesChanged(const Json& params);
  /// Of all open manifests.
  Json symbols(const Json& params);

  /// Checks it when nothing else is to be done.
  void checkLater(const std::string& uri);
  void checkAllLater();
  /// As the policy of its folder says; none when that excludes it.
  std::optional<vesk::check::Options> optionsFor(const Manuscript& manuscript);
  void publish(const std::string& uri, Json params, Json diagnostics);

  Session& session;
  const std::string rulesUri;
  Client client;
  Manuscripts manuscripts;
  bool looksUpFiles = false;
  std::vector<std::string> unchecked; ///< their URIs, in the order in which they are checked
  std::map<std::string, std::string> toldFaults; ///< of policies, by file
};

} // namespace tool::lsp

#endif
