// SPDX-License-Identifier: Apache-2.0
// The tree of a text and edits of it, by the cases in golden/source/: a case is a line with a text,
// lines with edits where it is about those, and indented lines with what comes of it.
#include "support.hpp"

#include <source/formatting.hpp>
#include <source/limits.hpp>
#include <source/lines.hpp>

#include <random>

using namespace vesk::source;

namespace
{
/// What "\n", "\x01" and the like stand for.
std::string unescaped(const std::string& text)
{
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i)
  {
    if (text[i] != '\\')
    {
      result += text[i];
      continue;
    }
    const char kind = text[++i];
    result += kind == 'n'   ? '\n'
              : kind == 'r' ? '\r'
                            : static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
    i += kind == 'x' ? 2 : 0;
  }
  return result;
}

std::string escaped(std::string_view text)
{
  constexpr std::string_view digits = "0123456789abcdef";
  std::string result;
  for (const char c : text)
  {
    const auto code = static_cast<unsigned char>(c);
    result += code >= 0x20 ? std::string(1, c)
              : c == '\n'  ? "\\n"
              : c == '\r'  ? "\\r"
                           : std::string("\\x") + digits[code >> 4U] + digits[code & 0xFU];
  }
  return result;
}

void show(std::ostream& out, const Document& document, const Node& node, const std::string& indent)
{
  constexpr std::array kinds{"declaration", "document type", "element",     "text",
                             "CDATA",       "comment",       "instruction", "reference"};
  out << indent << kinds.at(static_cast<std::size_t>(node.kind())) << ' ' << node.name() << " |"
      << escaped(node.value()) << "| " << escaped(document.text(node.range()));
  for (const Attribute& attribute : node.attributes())
  {
    out << " @" << escaped(document.text(attribute.range())) << " is |"
        << escaped(attribute.value()) << '|';
  }
  out << '\n';
  std::uint32_t end = node.startTag().end;
  for (const Node& child : node.children())
  {
    EXPECT_EQ(child.range().begin, end) << "what stands within an element is all of nodes";
    EXPECT_EQ(child.parent(), &node);
    end = child.range().end;
    show(out, document, child, indent + "  ");
  }
  EXPECT_TRUE(!node.isElement() || node.endTag().size() == 0 || node.endTag().begin == end);
}

std::string shown(const std::string& bytes)
{
  const Document document = Document::parse(bytes);
  std::ostringstream out;
  for (const Node& node : document.nodes())
  {
    show(out, document, node, "  ");
  }
  if (const auto& error = document.error())
  {
    const Place place = Lines(document.text()).placeOf(error->range.begin);
    out << "  " << place.line << ':' << place.column << ' ' << error->message << " |"
        << escaped(document.text(error->range)) << "|\n";
  }
  return out.str();
}

/// The nodes of a text as they stand, without blanks between them and in tags.
std::string outline(const Document& document, Node::ChildRange nodes)
{
  std::string result;
  for (const Node& node : nodes)
  {
    const std::string_view standing = document.text(node.range());
    const bool isBlank = standing.find_first_not_of(" \t\r\n") == std::string_view::npos;
    result.append(node.isElement() || isBlank ? node.name() : standing);
    for (const Attribute& attribute : node.attributes())
    {
      result.append("@").append(attribute.name()).append(document.text(attribute.valueRange()));
    }
    result.append(!node.isElement()           ? ""
                  : node.endTag().size() == 0 ? "/"
                                              : '(' + outline(document, node.children()) + ')');
  }
  return result;
}

std::string outline(const std::string& text)
{
  const Document document = Document::parse(text);
  return document.error() ? document.error()->message : outline(document, document.nodes());
}

std::string formatted(const std::string& text, const std::optional<std::string>& step = {})
{
  const Document document = Document::parse(text);
  return apply(document, formatting(document, step));
}

std::string messyElement(std::mt19937& random, int depth)
{
  const auto any = [&random](std::initializer_list<const char*> parts)
  { return std::string(parts.begin()[random() % parts.size()]); };
  std::string element = "<a" +
                        any({"", " b='1'", "\n\tb = '\"'  c=\"'\"", " xml:space='preserve'"}) +
                        any({"", "", " ", "\n "});
  if (random() % 4 == 0)
  {
    return element + "/>";
  }
  element += '>';
  for (auto left = depth == 0 ? 0 : random() % 6; left > 0; --left)
  {
    element += any({"", "", " ", "\n", "\n\n \n", "\n  ", "\n\t", "\n     "});
    element += random() % 8 == 0   ? any({"t", "&r;", "&#32;", "<![CDATA[ ]]>"})
               : random() % 3 == 0 ? any({"<!--c-->", "<!--\n c-->", "<?i x?>"})
                                   : messyElement(random, depth - 1);
  }
  return element + any({"", " ", "\n"}) + "</a" + any({"", " "}) + '>';
}

const Node& find(const Node& root, const std::string& name)
{
  for (const Node& child : root.children())
  {
    if (child.isElement(name))
    {
      return child;
    }
  }
  return root.isElement(name) ? root : throw std::runtime_error("no element " + name);
}

/// "b@c=1", "b=text" and "-b", "-b@c" for an element or attribute; "+b c" puts <c><d/></c> behind b,
/// "+ c" in front of all, and "< c" into an element that is empty.
void edit(Editor& editor, const Node& root, const std::string& command)
{
  const auto equals = command.find('=');
  const std::string value = command.substr(std::min(command.size(), equals + 1));
  const auto at = std::min(command.find('@'), command.size());
  const std::string attribute = at == command.size() ? "" : command.substr(at + 1, equals - at - 1);
  if (command[0] == '+')
  {
    const auto blank = command.find(' ');
    const std::string after = command.substr(1, blank - 1);
    const NewElement element{
        command.substr(blank + 1), {{"x", "<\""}}, "", {{"d", {}, "1 & 2", {}}}};
    const Node& sibling = after.empty() ? root : find(root, after);
    editor.insert(root, after.empty() ? nullptr : &sibling, {element});
  }
  else if (command[0] == '<')
  {
    editor.insert(find(root, command.substr(1)), nullptr, {{"d", {}, "", {}}, {"e", {}, "", {}}});
  }
  else if (command[0] == '-' && attribute.empty())
  {
    editor.remove(find(root, command.substr(1)));
  }
  else if (command[0] == '-')
  {
    editor.removeAttribute(*find(root, command.substr(1, at - 1)).attribute(attribute));
  }
  else if (!attribute.empty())
  {
    editor.setAttribute(find(root, command.substr(0, at)), attribute, value);
  }
  else
  {
    editor.setText(find(root, command.substr(0, equals)), value);
  }
}

/// Compares what comes of each case of a file with what the file says.
template <typename Result>
void compare(const std::string& file, const Result& resultOf)
{
  std::istringstream lines(contentOf(GOLDEN_FILES "/source/" + file));
  std::string line;
  std::string is;
  std::vector<std::string> given;
  std::string expected;
  const auto finish = [&]
  {
    if (!given.empty())
    {
      EXPECT_EQ(resultOf(given), expected) << given.front();
    }
    given.clear();
    expected.clear();
  };
  while (std::getline(lines, line))
  {
    if (line.substr(0, 2) == "  ")
    {
      expected += line + '\n';
      continue;
    }
    if (!expected.empty())
    {
      finish();
    }
    given.push_back(unescaped(line));
  }
  finish();
}
} // namespace

TEST(Source, MakesATreeOfAText)
{
  compare("trees.txt", [](const std::vector<std::string>& given) { return shown(given.front()); });
}

TEST(Source, EditsAsTheSurroundingsLook)
{
  compare("edits.txt",
          [](const std::vector<std::string>& given)
          {
            const Document document = Document::parse(given.front());
            Editor editor(document);
            const auto commands = [&]
            {
              for (auto command = given.begin() + 1; command != given.end(); ++command)
              {
                edit(editor, *document.root(), *command);
              }
            };
            const std::string refused = thrown<std::invalid_argument>(commands);
            return "  " + (refused.empty() ? escaped(editor.apply()) : refused) + '\n';
          });
}

TEST(Source, LaysOut)
{
  compare("formatting.txt",
          [](const std::vector<std::string>& given)
          {
            const auto step = given.size() == 1 ? std::nullopt : std::optional(given.back());
            std::string result;
            const std::string refused =
                thrown<std::invalid_argument>([&] { result = formatted(given.front(), step); });
            EXPECT_EQ(refused.empty() ? formatted(result, step) : "", result) << given.front();
            return "  " + (refused.empty() ? escaped(result) : refused) + '\n';
          });
  for (const char* const file : {"/oddities.written.xml", "/oddities.content.xml"})
  {
    const std::string written = contentOf(GOLDEN_FILES + std::string(file));
    EXPECT_EQ(formatted(written), written) << "what the library writes";
  }
}

// Laid out, a text has the same nodes, and there is nothing left to do.
TEST(Source, LaysOutBlanksAlone)
{
  std::mt19937 random(1);
  for (int i = 0; i < 3000; ++i)
  {
    const std::string text = "<!DOCTYPE a [<!ENTITY r ''>]>" + messyElement(random, 4);
    const std::string once = formatted(text);
    ASSERT_EQ(formatted(once), once) << text;
    ASSERT_EQ(outline(once), outline(text)) << text;
  }
}

// In each encoding a text gives the same tree, and an edit changes nothing but what it is about.
TEST(Source, KeepsTheEncoding)
{
  const auto textIn = [](const Encoding& encoding, const std::string& name, const std::string& text)
  {
    std::string whole = encoding.hasMark ? "\xEF\xBB\xBF" : "";
    whole.append("<?xml version='1.0' encoding='").append(name).append("'?>\r\n<a x=\"1\">");
    return whole.append(text).append("<!--\xC3\xA4--></a>\r\n");
  };
  for (const Encoding& encoding :
       {Encoding{"UTF-8", false}, Encoding{"UTF-8", true}, Encoding{"UTF-16LE", true},
        Encoding{"UTF-16BE", true}, Encoding{"UTF-16LE", false}, Encoding{"UTF-32BE", true},
        Encoding{"ISO-8859-1", false}, Encoding{"windows-1252", false}})
  {
    const std::string name = encoding.name.substr(0, encoding.name.find_last_of("LB"));
    const std::string bytes = encode(textIn(encoding, name, "\xC3\xA9"), encoding);
    const Document document = Document::parse(bytes);
    ASSERT_FALSE(document.error()) << encoding.name << document.error()->message;
    EXPECT_EQ(document.encoding().name, encoding.name);
    EXPECT_EQ(document.encoding().hasMark, encoding.hasMark);
    EXPECT_EQ(document.lineEnd(), LineEnd::CrLf);
    EXPECT_EQ(document.root()->firstChild()->value(), "\xC3\xA9");
    Editor editor(document);
    editor.setText(*document.root(), "\xC3\xB6\n\xE2\x98\x83"); // a snowman
    const bool hasAll = name.substr(0, 3) == "UTF";
    EXPECT_EQ(decode(editor.apply(), encoding).text,
              textIn(encoding, name, hasAll ? "\xC3\xB6\r\n\xE2\x98\x83" : "\xC3\xB6\r\n&#x2603;"));
    EXPECT_EQ(apply(document, {}), bytes);
  }
}

TEST(Source, RefusesEditsThatOverlap)
{
  const Document document = Document::parse("<a>text</a>");
  EXPECT_EQ(apply(document, {{{5, 6}, "2"}, {{3, 3}, "0"}, {{3, 5}, "1"}, {{6, 6}, "3"}}),
            "<a>0123t</a>");
  for (const Range second : {Range{4, 5}, Range{5, 4}, Range{9, 12}})
  {
    EXPECT_THROW(apply(document, {{{3, 5}, "x"}, {second, "y"}}), std::invalid_argument);
  }
}

TEST(Source, CountsLinesAndCharacters)
{
  const std::string text = "\xEF\xBB\xBF"
                           "a\xC3\xA9"
                           "b\r\n\rc\n";
  const Lines lines(text);
  const std::vector<std::tuple<std::size_t, int, int>> places{
      {0, 1, 1}, {3, 1, 1}, {4, 1, 2}, {6, 1, 3}, {9, 2, 1}, {10, 3, 1}, {12, 4, 1}, {99, 4, 1}};
  for (const auto& [offset, line, column] : places)
  {
    EXPECT_EQ(lines.placeOf(offset).line, line) << offset;
    EXPECT_EQ(lines.placeOf(offset).column, column) << offset;
  }
  EXPECT_EQ(lines.line(1), "a\xC3\xA9"
                           "b");
  EXPECT_EQ(lines.line(3), "c");
  EXPECT_EQ(lines.line(5), "");
  EXPECT_EQ(lines.count(), 4);
}

TEST(Source, HoldsTheLimits)
{
  const auto repeated = [](const std::string& text, int count)
  {
    std::string result;
    for (int i = 0; i < count; ++i)
    {
      result += text;
    }
    return result;
  };
  const auto attributes = [](int count)
  {
    std::string result;
    for (int i = 0; i < count; ++i)
    {
      result += " a" + std::to_string(i) + "=''";
    }
    return result;
  };
  const auto check = [](const vesk::Limit& limit, const auto& textWith)
  {
    EXPECT_EQ(shown(textWith(limit.most)).find(limit.what), std::string::npos) << limit.what;
    EXPECT_THAT(shown(textWith(limit.most + 1)), testing::HasSubstr(limit.refusal()));
  };
  namespace limits = vesk::limits;
  check(limits::depth, [&](int n) { return repeated("<a>", n) + repeated("</a>", n); });
  check(limits::attributes, [&](int n) { return "<a" + attributes(n) + "/>"; });
  check(limits::parentheses,
        [&](int n) { return "<!DOCTYPE a [<!--" + repeated("(", n) + "-->]><a/>"; });
  check(limits::referencesInEntities,
        [&](int n) { return "<!DOCTYPE a [<!ENTITY x '" + repeated("&y;", n) + "'>]><a/>"; });
  check(limits::declaredText,
        [&](int n)
        {
          return "<!DOCTYPE a [<!ENTITY x '" + std::string(static_cast<std::size_t>(n), 'x') +
                 "'>]><a/>";
        });
  check(limits::entities,
        [](int n)
        {
          std::string text = "<!DOCTYPE a [";
          for (int i = 0; i < n; ++i)
          {
            text += "<!ENTITY e" + std::to_string(i) + " ''>";
          }
          return text + "]><a/>";
        });
  check(limits::broughtInText,
        [&](int n)
        {
          const auto half = (static_cast<std::size_t>(n) + 6) / 2; // references are shorter by 6
          return "<!DOCTYPE a [<!ENTITY e '" + std::string(half, 'x') +
                 "'><!ENTITY ff '12345'>]><a b='&e;&e;" + (n % 2 == 0 ? "" : "&ff;") + "'/>";
        });
}
