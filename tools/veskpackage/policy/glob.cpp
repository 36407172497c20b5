// SPDX-License-Identifier: Apache-2.0
#include "policy/glob.hpp"

namespace tool
{
namespace
{
/// Whether patterns stand for items one by one, where some patterns stand for any number of items.
/// Of those only the last needs to be tried with more: what the ones before it took leaves it the
/// most.
template <typename Patterns, typename Items, typename IsAny, typename IsMatch>
bool matchesAll(const Patterns& patterns, const Items& items, const IsAny& isAny,
                const IsMatch& isMatch)
{
  std::size_t pattern = 0;
  std::size_t item = 0;
  std::size_t behindAny = 0; // 0 while there was none
  std::size_t takenByAny = 0;
  while (item < items.size())
  {
    if (pattern < patterns.size() && isAny(patterns[pattern]))
    {
      behindAny = ++pattern;
      takenByAny = item;
    }
    else if (pattern < patterns.size() && isMatch(patterns[pattern], items[item]))
    {
      ++pattern;
      ++item;
    }
    else if (behindAny != 0)
    {
      pattern = behindAny;
      item = ++takenByAny;
    }
    else
    {
      return false;
    }
  }
  while (pattern < patterns.size() && isAny(patterns[pattern]))
  {
    ++pattern;
  }
  return pattern == patterns.size();
}

std::vector<std::string_view> charactersOf(std::string_view utf8)
{
  std::vector<std::string_view> characters;
  for (std::size_t i = 0; i < utf8.size();)
  {
    std::size_t end = i + 1;
    while (end < utf8.size() && (static_cast<unsigned char>(utf8[end]) & 0xC0U) == 0x80)
    {
      ++end;
    }
    characters.push_back(utf8.substr(i, end - i));
    i = end;
  }
  return characters;
}

bool matchesName(std::string_view pattern, std::string_view name)
{
  return matchesAll(
      charactersOf(pattern), charactersOf(name),
      [](std::string_view character) { return character == "*"; },
      [](std::string_view wanted, std::string_view character)
      { return wanted == "?" || wanted == character; });
}
} // namespace

std::vector<std::string_view> namesIn(std::string_view path)
{
  std::vector<std::string_view> names;
  for (std::size_t begin = 0; begin < path.size();)
  {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    const std::string_view name = path.substr(begin, end - begin);
    if (!name.empty() && name != ".")
    {
      names.push_back(name);
    }
    begin = end + 1;
  }
  return names;
}

Glob::Glob(const std::string& pattern)
{
  for (const std::string_view name : namesIn(pattern))
  {
    names.emplace_back(name);
  }
  names.emplace_back("**"); // what is in a folder
}

bool Glob::matches(const std::vector<std::string_view>& path) const
{
  return matchesAll(
      names, path, [](const std::string& name) { return name == "**"; },
      [](const std::string& pattern, std::string_view name) { return matchesName(pattern, name); });
}

} // namespace tool
