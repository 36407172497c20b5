// SPDX-License-Identifier: Apache-2.0
// The language server as editors use it: each file in golden/lsp is a test. Lines after "> " are what
// the editor sends, those that follow each other at once; "open FILE" is short for a didOpen. Lines
// after "$ " are commands in the folder of the manifests. The others are what the server sends.
#include "support.hpp"

#include <cstdlib>
#include <fstream>
#include <lsp/completion.hpp>
#include <lsp/diagnostics.hpp>
#include <lsp/manifestserver.hpp>
#include <lsp/manuscripts.hpp>
#include <lsp/protocol/fileuri.hpp>
#include <lsp/protocol/jsontext.hpp>
#include <random>

using namespace tool::lsp;

namespace
{
std::string replaced(const std::string& text, const std::string& from, const std::string& to)
{
  return QString::fromStdString(text)
      .replace(QString::fromStdString(from), QString::fromStdString(to))
      .toStdString();
}

/// An editor's conversation with a server, as lines of text.
class Conversation
{
public:
  void put(const std::string& line)
  {
    std::string text = replaced(line, "$FOLDER", fileUriOf(folder.path("")));
    const std::string verb = text.substr(0, text.find(' '));
    const std::string rest = text.substr(std::min(verb.size() + 1, text.size()));
    if (verb == "begin")
    {
      isBrief = true;
      text = R"({"id":0,"method":"initialize","params":{"capabilities":)" + rest + "}}";
    }
    else if (verb == "on")
    {
      std::string manifest = replaced(replaced(rest, "\\n", "\n"), "\\r", "\r");
      const std::size_t cursor = manifest.find('|');
      manifest.erase(cursor, 1);
      const Json opened = {
          {"uri", fileUriOf(folder.path("on.xml"))}, {"version", 1}, {"text", manifest}};
      const Client client;
      const Manuscript manuscript(client, opened["uri"], 1, manifest);
      place = {{"textDocument", opened}, {"position", manuscript.positionOf(cursor)}};
      place["range"] = manuscript.rangeOf(cursor, cursor);
      text = textOf(Json{{"method", "textDocument/didOpen"}, {"params", place}});
    }
    else if (verb == "ask")
    {
      const std::size_t end = std::min(rest.find(' '), rest.size());
      Json params = place;
      params.update(end < rest.size() ? Json::parse(rest.substr(end)) : Json::object());
      text = textOf(Json{{"id", 1}, {"method", rest.substr(0, end)}, {"params", params}});
    }
    else if (verb == "open")
    {
      const std::string path = folder.path(rest);
      const Json opened = {{"uri", fileUriOf(path)}, {"version", 1}, {"text", contentOf(path)}};
      text =
          textOf(Json{{"method", "textDocument/didOpen"}, {"params", {{"textDocument", opened}}}});
    }
    Incoming incoming = incomingOf(text);
    if (incoming.message.is_object() && !incoming.message.contains("jsonrpc"))
    {
      incoming.message["jsonrpc"] = "2.0";
    }
    inbox.put(std::move(incoming));
  }

  /// All that the server sends until it has nothing left to do.
  std::string answers()
  {
    const bool wasOver = session.isOver();
    while (!inbox.isEmpty())
    {
      session.take(*inbox.take());
    }
    while (!session.isOver() && server.work())
    {}
    if (session.isOver() && !wasOver)
    {
      sent += "[exit code " + std::to_string(session.exitCode()) + "]\n";
    }
    sent = replaced(sent, fileUriOf(folder.path("")), "$FOLDER");
    sent = replaced(sent, folder.path(""), "$FOLDER");
    return replaced(std::exchange(sent, ""), VESKPACKAGE_VERSION, "$VERSION");
  }

  void run(const std::string& command)
  {
    const QString script =
        R"(cd "$0"; [ -e minimal.xml ] || cp -r "$1"/*.xml "$2"/check/*.xml . ; )";
    runProgram("sh", {"-c", script + QString::fromStdString(command),
                      QString::fromStdString(folder.path("")), EXAMPLE_MANIFESTS, GOLDEN_FILES});
  }

private:
  void show(Json message)
  {
    message.erase("jsonrpc");
    if (!isBrief)
    {
      sent += textOf(message) + '\n';
    }
    else if (message.contains("id") && message["id"] != 0)
    {
      const Json result = message.value("result", message.value("error", Json()));
      const Json values =
          result.is_object() ? result.value("items", Json::array({result})) : result;
      for (const Json& value : values.is_array() ? values : Json::array({values}))
      {
        sent += textOf(value) + '\n';
      }
    }
  }

  bool isBrief = false;
  Json place; ///< of an "on", with the members of the protocol's parameters

  const TemporaryFolder folder{};
  std::string sent;
  Inbox inbox;
  Session session{[this](const Json& message) { show(message); }};
  ManifestServer server{session, "file:///rules.md"};
};

std::vector<std::string> transcripts()
{
  std::vector<std::string> names;
  for (const QFileInfo& file : QDir(GOLDEN_FILES "/lsp").entryInfoList({"*.txt"}))
  {
    names.push_back(file.baseName().toStdString());
  }
  return names;
}

class LanguageServer : public testing::TestWithParam<std::string>
{};
} // namespace

TEST_P(LanguageServer, Answers)
{
  Conversation conversation;
  const std::string expected = contentOf(GOLDEN_FILES "/lsp/" + GetParam() + ".txt");
  std::istringstream lines(expected);
  std::string seen;
  for (std::string line; std::getline(lines, line);)
  {
    const std::string mark = line.substr(0, 2);
    if (mark == "# " || mark == "$ " || mark == "> ")
    {
      seen += line + '\n';
    }
    if (mark == "$ ")
    {
      conversation.run(line.substr(2));
    }
    else if (mark == "> ")
    {
      conversation.put(line.substr(2));
      const bool isAnswered = lines.peek() != '>' || line.compare(2, 4, "ask ") == 0;
      seen += isAnswered ? conversation.answers() : "";
    }
  }
  EXPECT_EQ(seen, expected);
  if (std::getenv("LSP_UPDATE") != nullptr) // read the difference
  {
    std::ofstream(GOLDEN_FILES "/lsp/" + GetParam() + ".txt") << seen;
  }
}

INSTANTIATE_TEST_SUITE_P(Lsp, LanguageServer, testing::ValuesIn(transcripts()),
                         [](const auto& transcript) { return transcript.param; });

namespace
{
std::string utf8Of(const std::u32string& text)
{
  const std::u32string behindMark = U'.' + text; // which is dropped in front
  return QString::fromUcs4(behindMark.data(), static_cast<int>(behindMark.size()))
      .mid(1)
      .toStdString();
}

/// A text as an editor has it: characters, and lines of them.
class Model
{
public:
  explicit Model(bool isInUtf8) : isUtf8(isInUtf8) {}

  std::size_t offsetOf(std::size_t line, std::size_t units) const
  {
    std::size_t at = 0;
    for (; line > 0 && at < text.size(); ++at)
    {
      line -= text[at] == '\n' || (text[at] == '\r' && text.substr(at + 1, 1) != U"\n") ? 1 : 0;
    }
    for (; at < text.size() && text[at] != '\n' && text[at] != '\r'; ++at)
    {
      const std::size_t length = lengthOf(text[at]);
      if (length > units)
      {
        break;
      }
      units -= length;
    }
    return at;
  }

  std::string inUtf8() const { return utf8Of(text); }

  std::u32string text;

private:
  std::size_t lengthOf(char32_t c) const
  {
    return isUtf8 ? (c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4) : c < 0x10000 ? 1 : 2;
  }

  bool isUtf8;
};
} // namespace

// More edits with LSP_EDITS=10000, others with LSP_SEED.
TEST(Manuscript, IsAsItsEditorHasIt)
{
  const auto number = [](const char* name, unsigned otherwise)
  {
    const char* const given = std::getenv(name);
    return given != nullptr ? static_cast<unsigned>(std::stoul(given)) : otherwise;
  };
  const std::vector<std::u32string> pieces{U"",
                                           U"",
                                           U"",
                                           U"\n",
                                           U"\r",
                                           U"\r\n",
                                           U"é",
                                           U"😀",
                                           U"<",
                                           U">",
                                           U"<package uuid=\"😀\">",
                                           U"</package>",
                                           U"<names><name lang=\"en\">é</name>",
                                           U"</names>",
                                           U"<!--",
                                           U"-->",
                                           U"&amp;",
                                           U"/>",
                                           U" x=''",
                                           U"\ufeff"};
  std::mt19937 random(number("LSP_SEED", 1));
  const auto below = [&random](std::size_t end) { return random() % end; };
  for (const char* const encoding : {"utf-16", "utf-8"})
  {
    const Json general = {{"positionEncodings", Json::array({encoding})}};
    const Client client(Json{{"capabilities", {{"general", general}}}});
    Model model(encoding == std::string("utf-8"));
    Manuscripts manuscripts(client);
    Manuscript& open = manuscripts.open({{"uri", "file:///a"}, {"version", 0}, {"text", ""}});
    for (unsigned edits = number("LSP_EDITS", 1000); edits > 0; --edits)
    {
      const std::u32string& piece = pieces[below(pieces.size())];
      Json change = {{"text", utf8Of(piece)}};
      std::size_t begin = 0;
      std::size_t end = model.text.size();
      if (below(100) != 0)
      {
        const Json from = {{"line", below(12)}, {"character", below(20)}};
        const Json to = {{"line", below(3) + from["line"].get<std::size_t>()},
                         {"character", below(20)}};
        begin = model.offsetOf(from["line"], from["character"]);
        end = std::max(begin, model.offsetOf(to["line"], to["character"]));
        const bool isForward = model.offsetOf(to["line"], to["character"]) >= begin;
        change["range"] = {{"start", from}, {"end", isForward ? to : from}};
      }
      model.text.replace(begin, end - begin, piece);
      open.change(open.version() + 1, Json::array({change}), 1U << 20U);
      ASSERT_EQ(open.text(), model.inUtf8()) << "after " << change;
      const std::size_t offset = model.offsetOf(below(12), below(20));
      const std::string before = utf8Of(model.text.substr(0, offset));
      ASSERT_EQ(open.offsetOf(open.positionOf(before.size())), before.size());
      Manuscripts fresh(client);
      Manuscript& same =
          fresh.open({{"uri", "file:///a"}, {"version", open.version()}, {"text", model.inUtf8()}});
      ASSERT_EQ(diagnosticsOf(open, ""), diagnosticsOf(same, "")) << model.inUtf8();
    }
  }
}

// In texts that end anywhere, and in whole ones, where what is put in leaves nothing that no reader knows.
TEST(Completion, GivesWhatThePlaceCanHold)
{
  const Client client;
  const auto misfits = [](const Manuscript& manuscript)
  {
    const std::string tags = "not-well-formed unknown-element misplaced-element unknown-attribute "
                             "skipped-text empty-entry repeated-section repeated-element "
                             "needless-repeat repeated-permission";
    return std::count_if(manuscript.findings().begin(), manuscript.findings().end(),
                         [&tags](const vesk::check::Finding& finding)
                         { return tags.find(finding.rule->tag) != std::string::npos; });
  };
  std::size_t given = 0;
  for (const char* const folder : {EXAMPLE_MANIFESTS, GOLDEN_FILES "/check"})
  {
    for (const QFileInfo& file : QDir(folder).entryInfoList({"*.xml"}))
    {
      const std::string text = contentOf(file.filePath().toStdString());
      const Manuscript whole(client, "untitled:", 1, text);
      const bool isSound = text.size() < 3000 && misfits(whole) == 0;
      for (std::size_t offset = 0; offset <= text.size(); offset += 1 + text.size() / 1500)
      {
        const Manuscript cut(client, "untitled:", 1, text.substr(0, offset));
        given += completionAt(cut, offset)["items"].size();
        const bool isAmongBlanks = text.substr(offset == 0 ? 0 : offset - 1, 2) == "  ";
        for (const Json& item :
             isSound && !isAmongBlanks ? completionAt(whole, offset)["items"] : Json::array())
        {
          const Json& edit = item["textEdit"];
          if (edit["range"]["start"] == edit["range"]["end"])
          {
            std::string added = text;
            added.insert(offset, edit["newText"].get<std::string>());
            const Manuscript with(client, "untitled:", 1, added);
            ASSERT_EQ(misfits(with), 0) << file.fileName().toStdString() << ' ' << offset << item;
          }
        }
      }
    }
  }
  EXPECT_GT(given, 1000U);
}
