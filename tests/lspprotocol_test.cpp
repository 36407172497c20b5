// SPDX-License-Identifier: Apache-2.0
// How messages come in. What a session answers to them is in golden/lsp/lifecycle.txt.
#include "support.hpp"

#include <atomic>
#include <lsp/protocol/fileuri.hpp>
#include <lsp/protocol/inbox.hpp>
#include <lsp/protocol/jsontext.hpp>
#include <lsp/protocol/messagereader.hpp>
#include <lsp/protocol/serving.hpp>
#include <random>
#include <thread>

using namespace tool::lsp;

namespace
{
/// What a reader makes of a stream: each message, "?" for junk, "+" for what is too long.
std::vector<std::string> messagesIn(std::istream& in)
{
  MessageReader reader(in);
  std::vector<std::string> messages;
  std::string message;
  for (auto result = reader.next(message); result != MessageReader::Result::End;
       result = reader.next(message))
  {
    messages.push_back(result == MessageReader::Result::Message ? message
                       : result == MessageReader::Result::Junk  ? "?"
                                                                : "+");
  }
  return messages;
}

std::vector<std::string> messagesIn(const std::string& bytes)
{
  std::istringstream in(bytes);
  return messagesIn(in);
}

/// A stream that comes in two reads, as one from a pipe.
class InTwo : public std::streambuf
{
public:
  InTwo(const std::string& all, std::size_t split) : parts{all.substr(split), all.substr(0, split)}
  {}

protected:
  int_type underflow() override
  {
    while (!parts.empty())
    {
      current = std::move(parts.back());
      parts.pop_back();
      setg(current.data(), current.data(), current.data() + current.size());
      if (!current.empty())
      {
        return traits_type::to_int_type(current.front());
      }
    }
    return traits_type::eof();
  }

private:
  std::vector<std::string> parts; ///< the first one last
  std::string current;
};

Incoming request(const Json& id, const std::string& method = "m", const Json& params = Json())
{
  Json message{{"jsonrpc", "2.0"}, {"method", method}, {"params", params}};
  if (!id.is_null())
  {
    message["id"] = id;
  }
  return incomingOf(textOf(message));
}
} // namespace

TEST(Messages, ComeAsTheirHeadersSay)
{
  const std::string next = framed("next");
  struct Case
  {
    std::string bytes; ///< `next` comes behind them
    std::vector<std::string> messages;
  };
  const std::vector<Case> cases{
      {"", {"next"}},
      {framed("") + framed("\r\n\r\n"), {"", "\r\n\r\n", "next"}},
      {framed(next), {next, "next"}},
      {"content-LENGTH:2\n\nab", {"ab", "next"}},
      {"Content-Type: x\r\nContent-Length: \t2 \t\r\nX: Content-Length: 9\r\n\r\nab",
       {"ab", "next"}},
      {"Content-Length: 9\r\nContent-Length: 2\r\n\r\nab", {"ab", "next"}},
      {"Content-Length: 002\r\n\r\nab", {"ab", "next"}},
      // A header that says nothing is skipped, up to the next one; how often, is told once.
      {"\r\n\r\n\n", {"?", "next"}},
      {"Content-Length: -2\r\n\r\n", {"?", "next"}},
      {"Content-Length: 2x\r\n\r\n", {"?", "next"}},
      {"Content-Length: +2\r\n\r\n\r\n", {"?", "next"}},
      {"Content-Length: 0x2\r\n\r\n", {"?", "next"}},
      {"Content-Length: 1 2\r\n\r\n", {"?", "next"}},
      {"Content-Length:\r\n\r\n", {"?", "next"}},
      {"Content-Length : 2\r\n\r\n", {"?", "next"}},
      {"Content-Lengths: 2\r\n\r\n", {"?", "next"}},
      {"{}\n\n" + framed("a") + "{}\r\n\r\n", {"?", "a", "?", "next"}},
      // In the header's lines junk does no harm, however long it is.
      {"{}\nContent-Length: 1\n" + std::string(100000, 'x') + "\n\na", {"a", "next"}},
      {std::string(100, '\0') + "\nContent-Length: 1\n\na", {"a", "next"}},
  };
  for (const Case& each : cases)
  {
    const std::string all = each.bytes + next;
    ASSERT_EQ(messagesIn(all), each.messages) << each.bytes.substr(0, 100);
    for (std::size_t split = 0; split <= all.size() && all.size() < 1000; ++split)
    {
      InTwo buffer(all, split);
      std::istream in(&buffer);
      ASSERT_EQ(messagesIn(in), each.messages) << each.bytes << " split at " << split;
      const std::vector<std::string> begun = messagesIn(all.substr(0, split));
      ASSERT_LE(begun.size(), each.messages.size());
      ASSERT_TRUE(std::equal(begun.begin(), begun.end(), each.messages.begin())) << all << split;
    }
  }
}

TEST(Messages, BeyondAllMeasureAreSkipped)
{
  const std::string tooLong = std::to_string(mostOfMessage + 1);
  EXPECT_EQ(messagesIn("Content-Length: " + tooLong + "\r\n\r\n" +
                       std::string(mostOfMessage + 1, ' ') + framed("next")),
            (std::vector<std::string>{"+", "next"}));
  for (const std::string& length : {tooLong, std::string("9223372036854775807"),
                                    std::string("18446744073709551616"), std::string(500, '9')})
  {
    EXPECT_THAT(messagesIn("Content-Length: " + length + "\r\n\r\n" + framed("lost")),
                testing::Not(testing::Contains("lost")));
  }
}

TEST(JsonText, IsTakenWithinBounds)
{
  const auto repeated = [](const std::string& piece, std::size_t count)
  {
    std::string text;
    for (; count > 0; --count)
    {
      text += piece;
    }
    return text;
  };
  const auto nested = [&repeated](std::size_t levels)
  { return repeated("[", levels) + repeated("]", levels); };
  const std::vector<std::pair<std::string, bool>> cases{
      {"null", true},
      {"", false},
      {"{}{}", false},
      {"[1,]", false},
      {R"({"a":"\ud83d\ude00 \"[[\\"})", true},
      {R"(["\ud83d"])", false},
      {"[\"\xC3\xA9\"]", true},
      {"[\"\xC3\"]", false},
      {"[\"\xED\xA0\x80\"]", false},
      {"[1e999]", false},
      {nested(100), true},
      {nested(101), false},
      {'[' + repeated(nested(99) + ',', 50) + "0]", true},
      {repeated("[", 10000000), false},
      {'"' + repeated("[{,", 100000) + '"', true},
      {'"' + repeated(R"(\"[)", 200) + '"', true},
      {'[' + repeated("1,", 9000) + "1]", true},
      {'[' + repeated("1,", 11000) + "1]", false},
      {'[' + repeated("12345678901,", 50000) + "1]", true},
      {'[' + repeated("12345678901,", 1000001) + "1]", false},
  };
  for (const auto& [text, isTaken] : cases)
  {
    EXPECT_EQ(parsed(text).has_value(), isTaken) << text.substr(0, 50) << ' ' << text.size();
    EXPECT_EQ(incomingOf(text).fault.empty(), isTaken);
  }
  EXPECT_EQ(parsed(textOf("a\xFF\n\u00e9")), Json("a\ufffd\n\u00e9"));
}

TEST(FileUri, IsThatOfAPathAndBack)
{
  std::mt19937 random(1);
  for (int i = 0; i < 500; ++i)
  {
    std::string path = "/";
    for (std::size_t length = random() % 8; length > 0; --length)
    {
      path += static_cast<char>(1 + random() % 255);
    }
    ASSERT_EQ(pathOf(fileUriOf(path)), path) << fileUriOf(path);
  }
  const std::vector<std::pair<const char*, std::optional<std::string>>> cases{
      {"file:/a", "/a"},
      {"file:///a?b#c", "/a"},
      {"file://localhost/%41%c3%A9", "/A\u00e9"},
      {"file:///a%2525", "/a%25"},
      {"file://elsewhere/a", std::nullopt},
      {"file:a", std::nullopt},
      {"file:///a%", std::nullopt},
      {"file:///a%4", std::nullopt},
      {"file:///a%4g", std::nullopt},
      {"file:///a%-1", std::nullopt},
      {"file:///a%00", std::nullopt},
      {"untitled:/a", std::nullopt},
      {"", std::nullopt}};
  for (const auto& [uri, path] : cases)
  {
    EXPECT_EQ(pathOf(uri), path) << uri;
  }
}

// Beside a plain list of what waits.
TEST(Inbox, KeepsTheOrderAndCancelsWhatWaits)
{
  std::mt19937 random(1);
  Inbox inbox;
  std::deque<std::pair<Json, bool>> model;
  for (int i = 0; i < 3000; ++i)
  {
    const Json id = random() % 2 == 0 ? Json(random() % 5) : Json(std::to_string(random() % 5));
    if (random() % 3 == 0)
    {
      ASSERT_TRUE(inbox.put(request(Json(), "$/cancelRequest", {{"id", id}})));
      for (auto& [waiting, isCancelled] : model)
      {
        isCancelled = isCancelled || waiting == id;
      }
      model.emplace_back(Json(), false);
    }
    else
    {
      ASSERT_TRUE(inbox.put(request(id)));
      model.emplace_back(id, false);
    }
    for (std::size_t taken = random() % 4; taken > 0 && !model.empty(); --taken)
    {
      const Incoming incoming = *inbox.take();
      ASSERT_EQ(incoming.message.value("id", Json()), model.front().first);
      ASSERT_EQ(incoming.isCancelled, model.front().second);
      model.pop_front();
    }
    ASSERT_EQ(inbox.isEmpty(), model.empty());
  }
}

TEST(Inbox, HoldsSoMuchUntilItIsClosed)
{
  for (const auto& [size, most] : {std::pair<std::size_t, int>(10, 1000), {5U << 20U, 4}})
  {
    Inbox inbox;
    std::atomic<int> count = 0;
    std::atomic<bool> isRefused = false;
    std::thread writer(
        [&, size = size]
        {
          for (; inbox.put({Json(), "", size}); ++count)
          {}
          isRefused = true;
        });
    const auto waitFor = [&count](int expected)
    {
      while (count < expected)
      {
        std::this_thread::yield();
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      EXPECT_EQ(count, expected);
    };
    waitFor(most);
    EXPECT_TRUE(inbox.take());
    waitFor(most + 1);
    EXPECT_FALSE(isRefused);
    inbox.close();
    writer.join();
    int left = 0;
    for (; inbox.take(); ++left)
    {}
    EXPECT_EQ(left, most);
  }
}

// The stream may stay open behind "exit"; its end alone is no good end.
TEST(Serving, EndsWithExitOrTheStream)
{
  const std::string start = framed(R"({"jsonrpc":"2.0","id":1,"method":"initialize"})");
  const std::string stop = framed(R"({"jsonrpc":"2.0","id":2,"method":"shutdown"})");
  const std::string exit = framed(R"({"jsonrpc":"2.0","method":"exit"})");
  const std::string junk = "no header\n\n" + framed("no JSON");
  struct Case
  {
    std::string input;
    const char* answers; ///< ids of results, codes of errors
    int exitCode;
  };
  const std::vector<Case> cases{{"", "", 1},
                                {start, "1 ", 1},
                                {start + start + stop + start, "1 -32600 2 -32600 ", 0},
                                {stop + exit + start, "-32002 ", 1},
                                {start + exit + stop, "1 ", 1},
                                {junk + start + stop + exit, "-32700 -32700 1 2 ", 0}};
  for (const Case& each : cases)
  {
    std::string answers;
    const auto send = [&answers](const Json& message)
    {
      const Json answer = message.contains("error") ? message["error"]["code"]
                          : message.contains("id")  ? message["id"]
                                                    : message["params"]["message"];
      answers += textOf(answer) + ' ';
    };
    Session session(send);
    session.onRequest("initialize", [](const Json&) { return Json::object(); });
    std::istringstream in(each.input);
    int works = 0;
    serve(in, session, [&works] { return ++works % 3 != 0; });
    EXPECT_EQ(answers, each.answers) << each.input;
    EXPECT_EQ(session.exitCode(), each.exitCode) << each.input;
  }
}
