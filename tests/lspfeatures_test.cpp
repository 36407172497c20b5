// SPDX-License-Identifier: Apache-2.0
// What the language server makes of manifests, beside plain models of that. Single answers are in
// golden/lsp.
#include "support.hpp"

#include <check/fixing.hpp>

#include <algorithm>
#include <filesystem>
#include <lsp/codeactions.hpp>
#include <lsp/cursor.hpp>
#include <lsp/folding.hpp>
#include <lsp/languageuses.hpp>
#include <lsp/links.hpp>
#include <lsp/protocol/fileuri.hpp>
#include <lsp/rename.hpp>
#include <lsp/symbols.hpp>
#include <map>

using namespace tool::lsp;
namespace source = vesk::source;

namespace
{
std::vector<std::string> manifestTexts()
{
  std::vector<std::string> texts;
  for (const char* const folder : {EXAMPLE_MANIFESTS, GOLDEN_FILES "/check"})
  {
    for (const QFileInfo& file : QDir(folder).entryInfoList({"*.xml"}))
    {
      const std::string text = contentOf(file.filePath().toStdString());
      if (source::encodingOf(text).isUtf8() && text.size() < 20000)
      {
        texts.push_back(text);
      }
    }
  }
  return texts;
}

char letterOf(const Cursor& cursor) { return ".CE/AV"[static_cast<int>(cursor.where)]; }

std::string pathOf(const std::vector<OpenElements::Open>& around)
{
  std::string path;
  for (const OpenElements::Open& element : around)
  {
    path.append("/").append(element.name);
  }
  return path;
}

/// What the tree of a text says of each place in it.
class PlacesModel
{
public:
  explicit PlacesModel(const source::Document& whole)
      : letters(whole.text().size() + 1, 'C'), around(letters.size()), document(whole)
  {
    for (const source::Node& node : document.nodes())
    {
      add(node, "");
    }
  }

  std::string letters;
  std::vector<std::string> around;

private:
  void set(std::size_t begin, std::size_t end, char letter)
  {
    std::fill(letters.begin() + static_cast<std::ptrdiff_t>(begin),
              letters.begin() + static_cast<std::ptrdiff_t>(end) + 1, letter);
  }

  void add(const source::Node& node, const std::string& outer)
  {
    const source::Range whole = node.range();
    if (!node.isElement())
    {
      const bool isText = node.kind() == source::Kind::Text && document.text(whole).front() != '<';
      set(whole.begin + (isText ? 0 : 1), whole.end - (isText ? 0 : 1), isText ? 'C' : '.');
      return;
    }
    const source::Range tag = node.startTag();
    for (std::size_t i = tag.begin + 1; i < tag.end; ++i)
    {
      const bool isBehindBlank = std::strchr(" \t\r\n", document.text()[i - 1]) != nullptr;
      letters[i] = isBehindBlank ? 'A' : '.';
    }
    for (const source::Attribute& attribute : node.attributes())
    {
      set(attribute.nameRange().begin, attribute.valueRange().begin, '.');
      set(attribute.nameRange().begin, attribute.nameRange().end, 'A');
      set(attribute.valueRange().begin, attribute.valueRange().end, 'V');
    }
    set(tag.begin + 1, tag.begin + 1 + node.name().size(), 'E');
    if (node.endTag().size() == 0)
    {
      return;
    }
    const std::string path = outer + '/' + std::string(node.name());
    std::fill(around.begin() + tag.end, around.begin() + whole.end, path);
    set(node.endTag().begin + 1, whole.end - 1, '.');
    set(node.endTag().begin + 2, node.endTag().begin + 2 + node.name().size(), '/');
    for (const source::Node& child : node.children())
    {
      add(child, path);
    }
  }

  const source::Document& document;
};

/// A text after the edits of the protocol, which are of the text before, in any order.
std::string edited(const Manuscript& manuscript, const Json& edits)
{
  std::map<std::uint32_t, std::pair<source::Range, std::string>> byBegin;
  for (const Json& edit : edits)
  {
    const source::Range range = manuscript.rangeOf(edit["range"]);
    const bool isOnly =
        byBegin.emplace(range.begin, std::pair(range, edit["newText"].get<std::string>())).second;
    EXPECT_TRUE(isOnly) << edit;
  }
  std::string text = manuscript.text();
  std::size_t last = text.size();
  for (auto edit = byBegin.rbegin(); edit != byBegin.rend(); ++edit)
  {
    const auto& [range, newText] = edit->second;
    EXPECT_LE(range.end, last);
    text.replace(range.begin, range.size(), newText);
    last = range.begin;
  }
  return text;
}
} // namespace

// Letters: Content, Element name, / name in an end tag, Attribute name, Value, . nowhere.
TEST(Cursor, KnowsPlacesInUnfinishedTexts)
{
  const std::vector<std::array<std::string, 3>> cases{
      // text, the letters of its places from the first to the one behind it, what is open at the end
      {"", "C", ""},
      {"<", "CE", ""},
      {"<a", "CEE", ""},
      {"<a ", "CEEA", ""},
      {"<a b", "CEEAA", ""},
      {"<a b=", "CEEAAV", ""},
      {"<a b= ", "CEEAAVA", ""},
      {"<a b='", "CEEAA.V", ""},
      {"<a b='c' ", "CEEAA.VV.A", ""},
      {"<a b=\"<c", "CEEAA.VEE", ""},
      {"<a><", "CEECE", "/a"},
      {"<a></", "CEEC./", "/a"},
      {"<a></a", "CEEC.//", "/a"},
      {"<a></a>", "CEEC.//C", ""},
      {"<a/>x", "CEE.CC", ""},
      {"<a><b></a>", "CEECEEC.//C", ""},
      {"<a></b>x", "CEEC.//CC", "/a"},
      {"<!-- <a>", "C........", ""},
      {"<a><![CDATA[<", "CEEC..........", "/a"},
      {"<?x y?><a>", "C......CEEC", "/a"},
      {"<!DOCTYPE a [<!ELEMENT b>]><a>", "C..........................CEEC", "/a"},
  };
  for (const auto& [text, letters, open] : cases)
  {
    std::string seen;
    for (std::size_t offset = 0; offset <= text.size(); ++offset)
    {
      seen += letterOf(cursorAt(text, offset));
    }
    EXPECT_EQ(seen, letters) << text;
    EXPECT_EQ(pathOf(cursorAt(text, text.size()).around), open) << text;
  }
}

// In well-formed texts as the tree has it, and the same in what stands in front of a place.
TEST(Cursor, IsWhereTheTreeSays)
{
  std::size_t seen = 0;
  for (const std::string& text : manifestTexts())
  {
    const source::Document document = source::Document::parseText(text);
    if (document.error() || text.find("<!DOCTYPE") != std::string::npos)
    {
      continue;
    }
    const PlacesModel model(document);
    // The declaration is in no tree.
    const std::size_t first = text.rfind("<?xml", 0) == 0 ? text.find("?>") + 2 : 0;
    for (std::size_t offset = first; offset <= text.size(); offset += 1 + text.size() / 2000)
    {
      const Cursor cursor = cursorAt(text, offset);
      const std::string near = text.substr(offset - std::min<std::size_t>(offset, 30), 60);
      ASSERT_EQ(letterOf(cursor), model.letters[offset]) << near;
      ASSERT_EQ(pathOf(cursor.around), model.around[offset]) << near;
      const std::string front = text.substr(0, offset);
      const Cursor begun = cursorAt(front, offset);
      ASSERT_EQ(pathOf(begun.around), model.around[offset]) << near;
      // What begins there is not known yet.
      if (offset == 0 || std::strchr("</=", text[offset - 1]) == nullptr)
      {
        ASSERT_EQ(letterOf(begun), model.letters[offset]) << near;
      }
      ++seen;
    }
  }
  EXPECT_GT(seen, 5000U);
}

// Every use of a code gets the new name, and with the old one all is as it was.
TEST(Rename, ChangesCodesAndNothingElse)
{
  const Client client;
  std::size_t renamed = 0;
  for (const std::string& text : manifestTexts())
  {
    const Manuscript before(client, "file:///a", 1, text);
    const std::vector<LanguageUse> uses = languageUsesIn(text);
    for (std::size_t i = 0; i < uses.size() && !before.document().error(); ++i)
    {
      const std::string code(uses[i].code);
      const std::size_t at = uses[i].begin + i % (code.size() + 1);
      ASSERT_EQ(renamableAt(before, at)["placeholder"], code);
      const Json edits = renameAt(before, at, "zu_ZA")["changes"]["file:///a"];
      const Manuscript after(client, "file:///a", 1, edited(before, edits));
      const std::vector<LanguageUse> usesAfter = languageUsesIn(after.text());
      ASSERT_EQ(usesAfter.size(), uses.size());
      for (std::size_t j = 0; j < uses.size(); ++j)
      {
        ASSERT_EQ(usesAfter[j].code, uses[j].code == code ? "zu_ZA" : uses[j].code);
      }
      std::string back = after.text();
      for (std::size_t place = back.find("zu_ZA"); place < back.size(); place = back.find("zu_ZA"))
      {
        back.replace(place, 5, code);
      }
      ASSERT_EQ(back, text);
      ++renamed;
    }
  }
  EXPECT_GT(renamed, 50U);
}

namespace
{
void expectNested(const Manuscript& manuscript, const Json& symbols, const source::Range& outer)
{
  for (const Json& symbol : symbols)
  {
    const source::Range range = manuscript.rangeOf(symbol["range"]);
    const source::Range selection = manuscript.rangeOf(symbol["selectionRange"]);
    ASSERT_TRUE(outer.begin <= range.begin && range.end <= outer.end) << symbol;
    ASSERT_TRUE(range.begin <= selection.begin && selection.end <= range.end) << symbol;
    ASSERT_FALSE(symbol["name"].get<std::string>().empty()) << symbol;
    expectNested(manuscript, symbol.value("children", Json::array()), range);
  }
}
} // namespace

// Of texts that end anywhere, too: editors refuse outlines that are not.
TEST(Outline, AndFoldsAreNested)
{
  const Client client(Json::parse(R"({"capabilities":{"textDocument":{"documentSymbol":
      {"hierarchicalDocumentSymbolSupport":true}}}})"));
  for (const std::string& text : manifestTexts())
  {
    for (std::size_t end = text.size(); end > 0; end -= std::min(end, 1 + text.size() / 30))
    {
      const Manuscript manuscript(client, "file:///a", 1, text.substr(0, end));
      expectNested(manuscript, symbolsOf(manuscript), {0, static_cast<std::uint32_t>(end)});
      std::vector<Json> around;
      for (const Json& fold : foldingOf(manuscript))
      {
        ASSERT_LT(fold["startLine"], fold["endLine"]);
        ASSERT_LT(fold["endLine"], manuscript.lines().count());
        while (!around.empty() && around.back()["endLine"] < fold["startLine"])
        {
          around.pop_back();
        }
        ASSERT_TRUE(around.empty() || fold["endLine"] <= around.back()["endLine"]) << fold;
        around.push_back(fold);
      }
    }
  }
}

// By itself, one fault after the other, and with whatever line ends: the same as the mender of files.
TEST(CodeActions, MendAllAsInFiles)
{
  const Client client(Json::parse(R"({"capabilities":{"textDocument":{"codeAction":
      {"codeActionLiteralSupport":{"codeActionKind":{"valueSet":[]}}}}}})"));
  std::size_t mended = 0;
  for (const char* const lineEnd : {"\n", "\r\n", "\r"})
  {
    for (std::string text : manifestTexts())
    {
      text =
          QString::fromStdString(text).replace("\r\n", "\n").replace("\n", lineEnd).toStdString();
      const Manuscript manuscript(client, "file:///a", 1, text);
      const Json params = {{"range", manuscript.rangeOf(0, 0)},
                           {"context", {{"only", {"source.fixAll"}}}}};
      const Json actions = codeActionsFor(manuscript, params);
      const std::string result =
          actions.empty() ? text : edited(manuscript, actions[0]["edit"]["changes"]["file:///a"]);
      ASSERT_EQ(result, vesk::check::fix(text).bytes);
      mended += result == text ? 0 : 1;
    }
  }
  EXPECT_GT(mended, 10U);
}

TEST(Links, StayInTheFolder)
{
  const TemporaryFolder folder;
  for (const char* const name : {"outer", "outer/in", "outer/in/sub", "outer/in/d.xar"})
  {
    std::filesystem::create_directory(folder.path(name));
  }
  for (const char* const name : {"outer/out.sh", "outer/in/a b.sh", "outer/in/sub/t.top"})
  {
    folder.file(name, "");
  }
  std::filesystem::create_symlink("../out.sh", folder.path("outer/in/escape.sh"));
  std::filesystem::create_symlink("sub/t.top", folder.path("outer/in/inner.top"));
  const std::vector<std::pair<std::string, std::string>> cases{
      {"sub/t.top", "sub/t.top"},
      {"./sub/t.top", "sub/t.top"},
      {"inner.top", "sub/t.top"},
      {"a b.sh", "a b.sh"},
      {"a&#32;b.sh", ""},
      {"sub", ""},
      {"d.xar", ""},
      {"none", ""},
      {"", ""},
      {"../out.sh", ""},
      {"sub/../../out.sh", ""},
      {"../in/sub/t.top", ""},
      {"escape.sh", ""},
      {folder.path("outer/in/sub/t.top"), ""},
  };
  const Client client;
  for (const auto& [path, target] : cases)
  {
    const std::string text =
        QStringLiteral(
            "<package><contents><dialogContent topicName='a'><topic language='en' path='%1'/>"
            "</dialogContent></contents><services><service name='s' "
            "execStart='\"%1\" sub'/></services></package>")
            .arg(QString::fromStdString(path))
            .toStdString();
    const Manuscript manuscript(client, fileUriOf(folder.path("outer/in/manifest.xml")), 1, text);
    const Json links = linksOf(manuscript);
    for (const Json& link : links)
    {
      const std::string file = tool::lsp::pathOf(link["target"].get<std::string>()).value();
      EXPECT_TRUE(!target.empty() &&
                  std::filesystem::equivalent(file, folder.path("outer/in/" + target)))
          << path << ' ' << file;
      const source::Range range = manuscript.rangeOf(link["range"]);
      EXPECT_EQ(text.substr(range.begin, range.size()), path);
    }
    EXPECT_EQ(links.size(), target.empty() ? 0U : 2U) << path;
  }
}
