// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_CHANGEDMANIFESTS_HPP
#define TESTS_CHANGEDMANIFESTS_HPP

#include "support.hpp"

#include <QDirIterator>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

/// All manifests of this project.
inline std::vector<std::string> manifests()
{
  std::vector<std::string> all;
  for (const char* folder : {EXAMPLE_MANIFESTS, GOLDEN_FILES})
  {
    QDirIterator files(folder, {"*.xml"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
    {
      all.push_back(contentOf(files.next().toStdString()));
    }
  }
  std::sort(all.begin(), all.end());
  return all;
}

/// Manifests with random changes, the same in every run.
class Changes
{
public:
  /// \p toInsert is put into \p originals.
  Changes(std::vector<std::string> originals, std::vector<std::string> toInsert)
      : all(std::move(originals)), inserted(std::move(toInsert))
  {}

  std::string next()
  {
    std::string text = oneOf(all) + '\n';
    for (std::size_t count = below(2) + 1; count > 0; --count)
    {
      const std::size_t at = place(text);
      switch (below(5))
      {
      case 0:
        text[std::min(at, text.size() - 1)] = static_cast<char>(below(256));
        break;
      case 1:
        text.erase(at, below(below(2) == 0 ? 4 : 200));
        break;
      case 2:
        text.insert(at, piece());
        break;
      default:
        text.insert(at, oneOf(inserted));
      }
      text += text.empty() ? "<" : "";
    }
    return text;
  }

private:
  std::size_t below(std::size_t limit) { return random() % std::max(limit, std::size_t(1)); }
  const std::string& oneOf(const std::vector<std::string>& texts)
  {
    return texts[below(texts.size())];
  }

  /// Often where a change leaves a manifest well-formed.
  std::size_t place(const std::string& text)
  {
    const std::size_t any = below(text.size() + 1);
    const std::size_t mark = text.find_first_of("<>\"' ", any);
    return below(3) == 0 || mark == std::string::npos ? any : mark + (text[mark] == '<' ? 0 : 1);
  }

  /// Often a whole line.
  std::string piece()
  {
    const std::string& from = oneOf(all);
    const std::size_t any = below(from.size());
    const std::size_t begin = below(2) == 0 ? from.find('\n', any) : any;
    return begin == std::string::npos
               ? from.substr(any)
               : from.substr(begin, begin == any ? below(200) : from.find('\n', begin + 1) - begin);
  }

  std::vector<std::string> all;
  std::vector<std::string> inserted;
  std::mt19937 random;
};

#endif
