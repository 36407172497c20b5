// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_ERRORS_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_ERRORS_HPP

#include <stdexcept>
#include <string>

namespace tool::lsp
{

/// Why a request is refused, by the protocol's numbers.
enum class ErrorCode : int
{
  ParseError = -32700,
  InvalidRequest = -32600,
  MethodNotFound = -32601,
  InvalidParams = -32602,
  InternalError = -32603,
  ServerNotInitialized = -32002,
  RequestCancelled = -32800,
  ContentModified = -32801,
  RequestFailed = -32803
};

/// Thrown where a request cannot be answered; the client gets code and message.
class RequestError : public std::runtime_error
{
public:
  RequestError(ErrorCode why, const std::string& message) : std::runtime_error(message), code(why)
  {}

  const ErrorCode code;
};

} // namespace tool::lsp

#endif
