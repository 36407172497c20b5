// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_INBOX_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_INBOX_HPP

#include "lsp/protocol/json.hpp"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

namespace tool::lsp
{

/// What has come from the editor.
struct Incoming
{
  Json message;
  std::string fault;    ///< why there is no message; empty when there is
  std::size_t size = 0; ///< of its text, in bytes
  bool isCancelled = false;
};

/// A message, from its text.
Incoming incomingOf(const std::string& text);

/// What has come and was not yet looked at. One thread puts messages in, another takes them out. It
/// holds so much and no more; who puts in has to wait then.
class Inbox
{
public:
  /// Cancels the requests that a `$/cancelRequest` names. False when nothing more is taken.
  bool put(Incoming incoming);
  /// The next one; waits for it. None when no more will come.
  std::optional<Incoming> take();
  bool isEmpty() const;
  /// No more will be put in, or taken out but for what is there.
  void close();

private:
  bool isFull() const;
  void cancel(const Json& id);

  mutable std::mutex mutex;
  std::condition_variable changed;
  std::deque<Incoming> waiting;
  std::size_t bytes = 0; ///< of those
  bool isClosed = false;
};

} // namespace tool::lsp

#endif
