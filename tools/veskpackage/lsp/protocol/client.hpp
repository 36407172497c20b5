// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_CLIENT_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_CLIENT_HPP

#include "lsp/protocol/json.hpp"

#include <string>

namespace tool::lsp
{

/// What the characters in a position are.
enum class PositionEncoding
{
  Utf16, ///< the protocol's own: UTF-16 code units
  Utf8   ///< bytes
};

/// What the editor can do, as it has said when it began.
class Client
{
public:
  /// \p initializeParams are those of the request `initialize`; without them it can do nothing.
  explicit Client(const Json& initializeParams = Json());

  PositionEncoding encoding() const { return itsEncoding; }

  /// Whether a capability is true; it is given by its place, such as
  /// "/textDocument/completion/completionItem/snippetSupport".
  bool supports(const std::string& capability) const;
  /// Whether it says anything of a capability.
  bool has(const std::string& capability) const { return !at(capability).is_null(); }
  /// Whether a capability is a list that has this value, such as "markdown" in
  /// "/textDocument/hover/contentFormat".
  bool supports(const std::string& capability, const std::string& value) const;

private:
  /// Null where there is none.
  const Json& at(const std::string& capability) const;

  Json capabilities;
  PositionEncoding itsEncoding = PositionEncoding::Utf16;
};

} // namespace tool::lsp

#endif
