// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_SESSION_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_SESSION_HPP

#include "lsp/protocol/errors.hpp"
#include "lsp/protocol/inbox.hpp"
#include "lsp/protocol/json.hpp"

#include <functional>
#include <map>
#include <string>

namespace tool::lsp
{

/// What is shown to people or logged, by the protocol's numbers.
enum class MessageType : int
{
  Error = 1,
  Warning = 2,
  Info = 3
};

/// A conversation with an editor: from `initialize` to `exit`, each request is answered, by its handler
/// or with an error. For one thread.
class Session
{
public:
  using Send = std::function<void(const Json& message)>;
  /// Gives the result. Throws RequestError for a refusal; what the JSON library throws for values that
  /// are missing or of another type is one of wrong parameters.
  using OnRequest = std::function<Json(const Json& params)>;
  using OnNotification = std::function<void(const Json& params)>;

  explicit Session(Send sendMessage) : send(std::move(sendMessage)) {}

  /// The handler of a method. One of `initialize` is needed; the session begins when it gives a result.
  /// \{
  void onRequest(const std::string& method, OnRequest handler);
  void onNotification(const std::string& method, OnNotification handler);
  /// \}

  void take(const Incoming& incoming);

  void notify(const std::string& method, const Json& params);
  /// Asks the client for something; what it answers is not looked at.
  void request(const std::string& method, const Json& params);
  /// \{
  void show(MessageType type, const std::string& message);
  void log(MessageType type, const std::string& message);
  /// \}

  /// Whether the client has said `exit`.
  bool isOver() const { return state == State::Over; }
  /// What the process is to exit with when it is over, or the client is gone.
  int exitCode() const { return isShutDown ? 0 : 1; }

private:
  enum class State
  {
    Begun,
    Running,
    ShutDown,
    Over
  };

  void takeRequest(const Json& id, const std::string& method, const Json& params, bool isCancelled);
  void takeNotification(const std::string& method, const Json& params);
  Json resultOf(const std::string& method, const Json& params);
  void refuse(const Json& id, ErrorCode code, const std::string& message);

  Send send;
  std::map<std::string, OnRequest> requests;
  std::map<std::string, OnNotification> notifications;
  State state = State::Begun;
  bool isShutDown = false;
  int asked = 0; ///< requests to the client
};

} // namespace tool::lsp

#endif
