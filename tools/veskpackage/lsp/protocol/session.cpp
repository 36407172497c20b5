// SPDX-License-Identifier: Apache-2.0
#include "lsp/protocol/session.hpp"

#include <new>
#include <utility>

namespace tool::lsp
{
namespace
{
/// Null where there is none.
Json fieldOf(const Json& message, const char* name)
{
  const auto member = message.find(name);
  return member != message.end() ? *member : Json();
}

bool isId(const Json& id) { return id.is_string() || id.is_number_integer(); }

void requireStructure(const Json& params)
{
  if (!params.is_structured())
  {
    throw RequestError(ErrorCode::InvalidParams, "params is neither object nor array");
  }
}
} // namespace

void Session::onRequest(const std::string& method, OnRequest handler)
{
  requests[method] = std::move(handler);
}

void Session::onNotification(const std::string& method, OnNotification handler)
{
  notifications[method] = std::move(handler);
}

void Session::take(const Incoming& incoming)
{
  if (isOver())
  {
    return;
  }
  if (!incoming.fault.empty())
  {
    refuse(nullptr, ErrorCode::ParseError, incoming.fault);
    return;
  }
  const Json& message = incoming.message;
  if (!message.is_object())
  {
    refuse(nullptr, ErrorCode::InvalidRequest,
           message.is_array() ? "batches are not taken" : "the message is no object");
    return;
  }
  const Json id = fieldOf(message, "id");
  const Json method = fieldOf(message, "method");
  const bool isAnswer =
      !message.contains("method") && (message.contains("result") || message.contains("error"));
  if (isAnswer)
  {
    return;
  }
  if (fieldOf(message, "jsonrpc") != "2.0" || !method.is_string() ||
      (message.contains("id") && !isId(id)))
  {
    refuse(isId(id) ? id : Json(), ErrorCode::InvalidRequest, "no request of JSON-RPC 2.0");
    return;
  }
  static const Json none = Json::object();
  const auto given = message.find("params");
  const Json& params = given == message.end() || given->is_null() ? none : *given;
  if (message.contains("id"))
  {
    takeRequest(id, method, params, incoming.isCancelled);
  }
  else
  {
    takeNotification(method, params);
  }
}

void Session::takeRequest(const Json& id, const std::string& method, const Json& params,
                          bool isCancelled)
{
  try
  {
    if (isCancelled)
    {
      throw RequestError(ErrorCode::RequestCancelled, "cancelled");
    }
    const Json result = resultOf(method, params);
    send({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
  }
  catch (const RequestError& refusal)
  {
    refuse(id, refusal.code, refusal.what());
  }
  catch (const Json::exception&)
  {
    refuse(id, ErrorCode::InvalidParams, "params lacks a member, or has one of another type");
  }
  catch (const std::exception& fault)
  {
    refuse(id, ErrorCode::InternalError, fault.what());
  }
}

Json Session::resultOf(const std::string& method, const Json& params)
{
  if (state == State::Begun && method != "initialize")
  {
    throw RequestError(ErrorCode::ServerNotInitialized, "initialize has to come first");
  }
  if (state == State::ShutDown || (state == State::Running && method == "initialize"))
  {
    throw RequestError(ErrorCode::InvalidRequest, state == State::ShutDown
                                                      ? "the server is shut down"
                                                      : "the server is initialized already");
  }
  if (method == "shutdown")
  {
    state = State::ShutDown;
    isShutDown = true;
    return nullptr;
  }
  const auto handler = requests.find(method);
  if (handler == requests.end())
  {
    throw RequestError(ErrorCode::MethodNotFound, "there is no method " + method);
  }
  requireStructure(params);
  Json result = handler->second(params);
  state = State::Running;
  return result;
}

void Session::takeNotification(const std::string& method, const Json& params)
{
  if (method == "exit")
  {
    state = State::Over;
    return;
  }
  const auto handler = notifications.find(method);
  if (state != State::Running || handler == notifications.end())
  {
    return;
  }
  try
  {
    requireStructure(params);
    handler->second(params);
  }
  catch (const Json::exception&)
  {
    log(MessageType::Warning, method + ": params lacks a member, or has one of another type");
  }
  catch (const std::exception& fault)
  {
    log(MessageType::Warning, method + ": " + fault.what());
  }
}

void Session::notify(const std::string& method, const Json& params)
{
  send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

void Session::request(const std::string& method, const Json& params)
{
  send({{"jsonrpc", "2.0"}, {"id", ++asked}, {"method", method}, {"params", params}});
}

void Session::show(MessageType type, const std::string& message)
{
  notify("window/showMessage", {{"type", type}, {"message", message}});
}

void Session::log(MessageType type, const std::string& message)
{
  notify("window/logMessage", {{"type", type}, {"message", message}});
}

void Session::refuse(const Json& id, ErrorCode code, const std::string& message)
{
  send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", message}}}});
}

} // namespace tool::lsp
