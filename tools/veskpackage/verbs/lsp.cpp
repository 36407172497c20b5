// SPDX-License-Identifier: Apache-2.0
#include "lsp/manifestserver.hpp"
#include "lsp/protocol/fileuri.hpp"
#include "lsp/protocol/jsontext.hpp"
#include "lsp/protocol/messagereader.hpp"
#include "lsp/protocol/serving.hpp"
#include "verbs/verbs.hpp"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace tool
{

ExitCode serveEditor()
{
  std::ios::sync_with_stdio(false); // which takes each character by itself
  std::cin.tie(nullptr);            // or the thread that reads would write what waits to be written
  // Writing fails when the editor is gone. The thread that reads cannot be called back then.
  const auto send = [](const lsp::Json& message)
  {
    if (!(std::cout << lsp::framed(lsp::textOf(message))).flush())
    {
      std::_Exit(FileTrouble);
    }
  };
  std::error_code unknown;
  const bool hasRules = std::filesystem::exists(RULES_DOCUMENT, unknown);
  lsp::Session session(send);
  lsp::ManifestServer server(session, hasRules ? lsp::fileUriOf(RULES_DOCUMENT) : std::string());
  lsp::serve(std::cin, session, [&server] { return server.work(); });
  return session.exitCode() == 0 ? Done : NegativeResult;
}

} // namespace tool
