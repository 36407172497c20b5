// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_LANGUAGES_HPP
#define PACKAGE_LANGUAGES_HPP

#include <algorithm>
#include <iterator>
#include <list>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace vesk
{

/// Erases the entries of \p map whose key begins with none of \p languages, so that a general code
/// ("en") keeps its regional variants ("en_US").
template <typename Value>
void trimFromLanguages(std::map<std::string, Value>& map, const std::list<std::string>& languages)
{
  for (auto entry = map.begin(); entry != map.end();)
  {
    const std::string& key = entry->first;
    const bool kept = std::any_of(languages.begin(), languages.end(),
                                  [&key](const std::string& language)
                                  { return key.compare(0, language.size(), language) == 0; });
    entry = kept ? std::next(entry) : map.erase(entry);
  }
}

/// The text under \p key; empty when there is none.
inline std::string textOrEmpty(const std::map<std::string, std::string>& map,
                               const std::string& key)
{
  const auto entry = map.find(key);
  return entry == map.end() ? std::string() : entry->second;
}

/// Appends many languages to a list without duplicates, in a time that does not grow with the
/// square of their number as walking the list for each would.
class LanguageAppender
{
public:
  explicit LanguageAppender(std::list<std::string>& list)
      : languages(list), known(list.begin(), list.end())
  {}

  void append(std::string language)
  {
    if (known.count(language) == 0)
    {
      known.insert(languages.emplace_back(std::move(language)));
    }
  }

private:
  std::list<std::string>& languages;
  std::set<std::string_view> known; // into the list, whose elements stay where they are
};

} // namespace vesk

#endif
