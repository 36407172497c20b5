// SPDX-License-Identifier: Apache-2.0
#include "lsp/protocol/serving.hpp"

#include "lsp/protocol/messagereader.hpp"

#include <exception>
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

bool isMoreAfter(const std::function<bool()>& work, Session& session)
{
  try
  {
    return work();
  }
  catch (const std::exception& fault) // memory ran out, say; the rest of the work may be done
  {
    session.log(MessageType::Error, fault.what());
    return true;
  }
}
} // namespace

void serve(std::istream& in, Session& session, const std::function<bool()>& work)
{
  Inbox inbox;
  std::thread reader([&in, &inbox] { receive(in, inbox); });
  while (!session.isOver())
  {
    if (inbox.isEmpty() && isMoreAfter(work, session))
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
