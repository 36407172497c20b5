// SPDX-License-Identifier: Apache-2.0
#include "lsp/protocol/inbox.hpp"

#include "lsp/protocol/jsontext.hpp"

#include <utility>

namespace tool::lsp
{
namespace
{
constexpr std::size_t mostMessages = 1000;
constexpr std::size_t mostBytesWaiting = std::size_t{16} << 20U; // beside the one that exceeds them

bool isNamed(const Json& message, const char* method)
{
  const auto named = message.find("method");
  return message.is_object() && named != message.end() && *named == method;
}
} // namespace

Incoming incomingOf(const std::string& text)
{
  std::optional<Json> message = parsed(text);
  return message ? Incoming{std::move(*message), {}, text.size()}
                 : Incoming{{}, "the message is no JSON, or beyond all measure", text.size()};
}

bool Inbox::put(Incoming incoming)
{
  std::unique_lock<std::mutex> lock(mutex);
  changed.wait(lock, [this] { return isClosed || !isFull(); });
  if (isClosed)
  {
    return false;
  }
  if (isNamed(incoming.message, "$/cancelRequest"))
  {
    const Json::json_pointer id("/params/id");
    cancel(incoming.message.contains(id) ? incoming.message.at(id) : Json());
  }
  bytes += incoming.size;
  waiting.push_back(std::move(incoming));
  changed.notify_all();
  return true;
}

std::optional<Incoming> Inbox::take()
{
  std::unique_lock<std::mutex> lock(mutex);
  changed.wait(lock, [this] { return isClosed || !waiting.empty(); });
  if (waiting.empty())
  {
    return std::nullopt;
  }
  Incoming taken = std::move(waiting.front());
  waiting.pop_front();
  bytes -= taken.size;
  changed.notify_all();
  return taken;
}

bool Inbox::isEmpty() const
{
  const std::lock_guard<std::mutex> lock(mutex);
  return waiting.empty();
}

void Inbox::close()
{
  const std::lock_guard<std::mutex> lock(mutex);
  isClosed = true;
  changed.notify_all();
}

bool Inbox::isFull() const { return waiting.size() >= mostMessages || bytes > mostBytesWaiting; }

void Inbox::cancel(const Json& id)
{
  for (Incoming& incoming : waiting)
  {
    const auto itsId = incoming.message.find("id");
    const bool isMeant = !id.is_null() && incoming.message.is_object() &&
                         itsId != incoming.message.end() && *itsId == id;
    incoming.isCancelled = incoming.isCancelled || isMeant;
  }
}

} // namespace tool::lsp
