// SPDX-License-Identifier: Apache-2.0
// Gives the language server what an editor might send: each line as a message, or all as it is where it
// begins with a header. Each request is answered once, and no
// place that is told ends before it begins.
#include "support.hpp"

#include <lsp/manifestserver.hpp>
#include <lsp/protocol/jsontext.hpp>
#include <lsp/protocol/messagereader.hpp>
#include <sstream>

using namespace tool::lsp;

namespace
{
/// A server, and what it has sent.
class Served
{
public:
  void take(const std::string& text)
  {
    Incoming incoming = incomingOf(text);
    const Json& message = incoming.message;
    const bool isRequest = message.is_object() && message.contains("method") &&
                           message.contains("id") && !session.isOver();
    const std::size_t before = answers;
    session.take(incoming);
    require(!isRequest || answers == before + 1, "an answer to a request");
    while (server.work())
    {}
  }

private:
  void receive(const Json& message)
  {
    require(parsed(textOf(message)).has_value(), "a message that is JSON");
    answers += message.contains("id") && !message.contains("method") ? 1 : 0;
    if (message.value("method", "") == "textDocument/publishDiagnostics")
    {
      requireSound(message["params"]["diagnostics"]);
    }
  }

  static void requireSound(const Json& diagnostics)
  {
    for (const Json& diagnostic : diagnostics)
    {
      const Json& begin = diagnostic["range"]["start"];
      const Json& end = diagnostic["range"]["end"];
      require(begin["line"] >= 0 && begin["character"] >= 0, "a place in the text");
      require(begin["line"] < end["line"] ||
                  (begin["line"] == end["line"] && begin["character"] <= end["character"]),
              "an end behind the begin");
    }
  }

  std::size_t answers = 0;
  Session session{[this](const Json& message) { receive(message); }};
  ManifestServer server{session, "file:///rules.md"};
};

std::string framedLines(const std::string& text)
{
  std::istringstream lines(text);
  std::string stream;
  for (std::string line; std::getline(lines, line);)
  {
    stream += framed(line);
  }
  return stream;
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const std::string text = textOf(data, size);
  std::istringstream stream(text.compare(0, 8, "Content-") == 0 ? text : framedLines(text));
  MessageReader reader(stream);
  Served served;
  std::string message;
  for (auto result = reader.next(message); result != MessageReader::Result::End;
       result = reader.next(message))
  {
    if (result == MessageReader::Result::Message)
    {
      served.take(message);
    }
  }
  return 0;
}
