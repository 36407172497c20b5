// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_LANGUAGECODES_HPP
#define PACKAGE_LANGUAGECODES_HPP

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <list>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vesk
{

/// Tells which keys begin with one of many languages, so that a general code ("en") keeps its
/// regional variants ("en_US").
class LanguagePrefixes
{
public:
  explicit LanguagePrefixes(const std::list<std::string>& list)
  {
    // In sorted order, a code is followed by those that begin with it; they match nothing more.
    for (const std::string_view language : std::set<std::string_view>(list.begin(), list.end()))
    {
      if (shortest.empty() || !startsWith(language, shortest.back()))
      {
        shortest.push_back(language);
      }
    }
  }

  bool matches(std::string_view key) const
  {
    // No code here begins with another, so only the last one <= key can be a prefix of the key.
    const auto behind = std::upper_bound(shortest.begin(), shortest.end(), key);
    return behind != shortest.begin() && startsWith(key, *std::prev(behind));
  }

private:
  static bool startsWith(std::string_view text, std::string_view beginning)
  {
    return text.substr(0, beginning.size()) == beginning;
  }

  std::vector<std::string_view> shortest; // into the list
};

/// Erases the entries of \p map whose key begins with none of \p languages.
template <typename Value>
void trimFromLanguages(std::map<std::string, Value>& map, const std::list<std::string>& languages)
{
  const LanguagePrefixes prefixes(languages);
  for (auto entry = map.begin(); entry != map.end();)
  {
    entry = prefixes.matches(entry->first) ? std::next(entry) : map.erase(entry);
  }
}

/// The text under \p key; empty when there is none.
inline std::string textOrEmpty(const std::map<std::string, std::string>& map,
                               const std::string& key)
{
  const auto entry = map.find(key);
  return entry == map.end() ? std::string() : entry->second;
}

/// Appends languages to a list without duplicates. A short list is searched, which is fastest. For
/// a longer one a set is kept, so that the time does not grow with the square of the length.
class LanguageAppender
{
public:
  explicit LanguageAppender(std::list<std::string>& list) : languages(list) {}

  void append(std::string language)
  {
    if (!isKnown(language))
    {
      languages.push_back(std::move(language));
      if (!known.empty())
      {
        known.insert(languages.back());
      }
    }
  }

private:
  static constexpr std::size_t few = 16;

  bool isKnown(const std::string& language)
  {
    if (languages.size() <= few)
    {
      return std::find(languages.begin(), languages.end(), language) != languages.end();
    }
    if (known.empty())
    {
      known.insert(languages.begin(), languages.end());
    }
    return known.count(language) != 0;
  }

  std::list<std::string>& languages;
  std::set<std::string_view> known; // into the list, whose elements stay where they are
};

} // namespace vesk

#endif
