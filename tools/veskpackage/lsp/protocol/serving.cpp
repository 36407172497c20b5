// SPDX-License-Identifier: Apache-2.0
#include "lsp/protocol/serving.hpp"

#include "lsp/protocol/messagereader.hpp"

#include <thread>
#include <utility>

namespace tool::lsp
{
namespace
{
bool isExit(const Incoming& incoming)
{
  const Json& message = incoming.message;
  return message.is_object() && message.contains("method") && message["method"] == "exit";
}

/// Up to `exit`: an editor may keep the stream open behind it.
void receive(std::istream& in, Inbox& inbox)
{
  MessageReader reader(in);
  std::string text;
  bool isMore = true;
  while (isMore)
  {
    const MessageReader::Result result = reader.next(text);
    if (result == MessageReader::Result::End)
    {
      break;
    }
    Incoming incoming = result == MessageReader::Result::Message ? incomingOf(text)
                        : result == MessageReader::Result::TooLong
                            ? Incoming{{}, "the message is too long"}
                            : Incoming{{}, "there is no header with a Content-Length"};
    isMore = !isExit(incoming);
    isMore = inbox.put(std::move(incoming)) && isMore;
  }
  inbox.close();
}
} // namespace

void serve(std::istream& in, Session& session, const std::function<bool()>& work)
{
  Inbox inbox;
  std::thread reader([&in, &inbox] { receive(in, inbox); });
  while (!session.isOver())
  {
    if (inbox.isEmpty() && work())
    {
      continue;
    }
    const std::optional<Incoming> incoming = inbox.take();
    if (!incoming)
    {
      break;
    }
    session.take(*incoming);
  }
  inbox.close();
  reader.join();
}

} // namespace tool::lsp
