// SPDX-License-Identifier: Apache-2.0
#include <edit/fieldpath.hpp>
#include <edit/json.hpp>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace vesk::edit
{
namespace
{
bool isPlain(char character)
{
  constexpr std::string_view special = ".[]\"=\x7F";
  return static_cast<unsigned char>(character) > ' ' &&
         special.find(character) == std::string_view::npos;
}

class PathParser
{
public:
  explicit PathParser(const std::string& toParse) : text(toParse) {}

  /// Reads up to the end or a "=".
  FieldPath parse()
  {
    FieldPath path{at('[') ? index() : name()};
    while (position < text.size() && !at('='))
    {
      if (at('['))
      {
        path.push_back(index());
      }
      else
      {
        expect('.', R"("." or "[")");
        path.push_back(name());
      }
    }
    return path;
  }

  std::size_t expect(char character, const std::string& what)
  {
    if (!at(character))
    {
      fail("expected " + what);
    }
    return ++position;
  }

  void expectEnd()
  {
    if (position < text.size())
    {
      fail("expected the end of the field");
    }
  }

private:
  bool at(char character) const { return position < text.size() && text[position] == character; }

  FieldStep index()
  {
    expect('[', "\"[\"");
    if (at('*'))
    {
      ++position;
      expect(']', "\"]\"");
      return EveryElement();
    }
    std::size_t number = 0;
    const auto [end, error] =
        std::from_chars(text.data() + position, text.data() + text.size(), number);
    if (error != std::errc())
    {
      fail("expected an index, as in [0], or [*] for all");
    }
    position = static_cast<std::size_t>(end - text.data());
    expect(']', "\"]\"");
    return number;
  }

  FieldStep name()
  {
    if (at('"'))
    {
      return quotedName();
    }
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(position);
    const auto end = std::find_if_not(begin, text.end(), isPlain);
    if (begin == end)
    {
      fail("expected a name (in quotes when it is empty or holds other than plain characters)");
    }
    position = static_cast<std::size_t>(end - text.begin());
    return std::string(begin, end);
  }

  FieldStep quotedName()
  {
    std::size_t end = position + 1;
    while (end < text.size() && text[end] != '"')
    {
      end += text[end] == '\\' ? 2 : 1;
    }
    if (end >= text.size())
    {
      fail("the quotes are not closed");
    }
    const auto quoted =
        nlohmann::json::parse(text.substr(position, end + 1 - position), nullptr, false);
    if (!quoted.is_string())
    {
      fail("what is quoted is no JSON string");
    }
    position = end + 1;
    return quoted.get<std::string>();
  }

  [[noreturn]] void fail(const std::string& what) const
  {
    const auto isFirstByte = [](char byte) { return (static_cast<unsigned char>(byte) >> 6) != 2; };
    const auto characters = std::count_if(
        text.begin(), text.begin() + static_cast<std::ptrdiff_t>(position), isFirstByte);
    throw FieldError(text + ": at character " + std::to_string(characters + 1) + ": " + what);
  }

  const std::string& text;
  std::size_t position = 0;
};

std::string nameToText(const std::string& name)
{
  const bool plain = !name.empty() && std::all_of(name.begin(), name.end(), isPlain);
  return plain ? name : toJson(AnyConstReference(name), -1);
}
} // namespace

FieldPath parseFieldPath(const std::string& text)
{
  PathParser parser(text);
  FieldPath path = parser.parse();
  parser.expectEnd();
  return path;
}

std::pair<FieldPath, std::string> parseAssignment(const std::string& text)
{
  PathParser parser(text);
  FieldPath path = parser.parse();
  const std::size_t value = parser.expect('=', "\"=\" and a value");
  return {std::move(path), text.substr(value)};
}

std::string toText(const FieldPath& path)
{
  std::string text;
  for (const FieldStep& step : path)
  {
    if (const auto* index = std::get_if<std::size_t>(&step))
    {
      text += '[' + std::to_string(*index) + ']';
    }
    else if (std::holds_alternative<EveryElement>(step))
    {
      text += "[*]";
    }
    else
    {
      text += (text.empty() ? "" : ".") + nameToText(std::get<std::string>(step));
    }
  }
  return text;
}

} // namespace vesk::edit
