// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_MANUSCRIPTS_HPP
#define TOOLS_VESKPACKAGE_LSP_MANUSCRIPTS_HPP

#include "lsp/manuscript.hpp"

#include <map>
#include <string>

namespace tool::lsp
{

/// The documents that are open in an editor, by their URIs. There may be so many and no more, of so
/// much text. Only of the one that was used last what was made of its text is kept.
class Manuscripts
{
public:
  /// \p editor must outlive it.
  explicit Manuscripts(const Client& editor) : client(editor) {}

  /// Takes a TextDocumentItem, also in place of an open one. Throws RequestError when that would be
  /// too many or too much; then it is not open.
  Manuscript& open(const Json& textDocument);
  /// Makes the changes of a `textDocument/didChange`; null when it is not open. Throws RequestError when
  /// they cannot be made; it is closed then, since nobody knows its text any longer.
  Manuscript* change(const Json& params);
  void close(const std::string& uri);
  /// Null when it is not open.
  Manuscript* find(const std::string& uri);

  /// \{
  auto begin() const { return all.begin(); }
  auto end() const { return all.end(); }
  /// \}

private:
  std::size_t bytesBesides(const std::string& uri) const;
  void use(Manuscript& manuscript);

  const Client& client;
  std::map<std::string, Manuscript> all;
  Manuscript* lastUsed = nullptr;
};

} // namespace tool::lsp

#endif
