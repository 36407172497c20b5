// SPDX-License-Identifier: Apache-2.0
// Manifests that are read without the toolkit's parser are read as with it: those of this project, and
// random changes of them. Set READALIKE_COUNT for more than a few of these.
#include "support.hpp"

#include <QDirIterator>

#include <fuzz/readalike.hpp>
#include <iostream>
#include <random>

namespace
{
std::vector<std::string> manifests()
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

/// What fuzzers put into manifests, and what the parsers may take for something else.
std::vector<std::string> tokens()
{
  std::vector<std::string> all{" ",
                               "\t",
                               "\n",
                               "\r",
                               "\x85",
                               "\xC2\x85",
                               "\xC2\xB7",
                               "\xCB\x81",
                               "\xE3\x80\x80",
                               "\xE2\x80\x8B",
                               "\xEF\xBB\xBF",
                               "\xF0\x9F\xBF\xBE",
                               "&#9;",
                               "&#xA0;",
                               "&#65279;",
                               "&#0065;",
                               "&#x00000041;",
                               "&#4294967361;",
                               "<b>c</b>",
                               "<!---->",
                               "<![CDATA[]]>",
                               "<![CDATA[ ]]>",
                               "<a:b/>",
                               " x='&#10;'",
                               " x='\n'",
                               "<?x?>",
                               "<?xml-x encoding='latin1'?>",
                               "<canSitDown/>",
                               "version='1.1'"};
  std::istringstream lines(contentOf(PROJECT_FOLDER "fuzz/manifest.dict"));
  for (std::string line; std::getline(lines, line);)
  {
    std::string token;
    for (std::size_t i = 1; i + 1 < line.size() && line.front() == '"'; ++i)
    {
      if (line[i] == '\\' && line[i + 1] == 'x')
      {
        token += static_cast<char>(std::stoi(line.substr(i + 2, 2), nullptr, 16));
        i += 3;
      }
      else
      {
        i += line[i] == '\\' ? 1 : 0;
        token += line[i];
      }
    }
    all.push_back(token);
  }
  return all;
}

class Changes
{
public:
  explicit Changes(std::vector<std::string> originals) : all(std::move(originals)) {}

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
  std::vector<std::string> inserted = tokens();
  std::mt19937 random; // the same in every run
};
} // namespace

TEST(ReadAlike, ManifestsOfThisProject)
{
  std::size_t withoutToolkit = 0;
  for (const std::string& path : exampleManifests())
  {
    EXPECT_TRUE(requireReadAlike(contentOf(path))) << path;
  }
  const std::vector<std::string> all = manifests();
  for (const std::string& manifest : all)
  {
    withoutToolkit += requireReadAlike(manifest) ? 1 : 0;
  }
  std::cout << withoutToolkit << " of " << all.size() << " are read without the toolkit\n";
}

TEST(ReadAlike, ChangedManifests)
{
  const char* const wanted = std::getenv("READALIKE_COUNT");
  const int count = wanted != nullptr ? std::stoi(wanted) : 2000;
  Changes changes(manifests());
  int withoutToolkit = 0;
  for (int i = 0; i < count; ++i)
  {
    withoutToolkit += requireReadAlike(changes.next()) ? 1 : 0;
  }
  std::cout << withoutToolkit << " of " << count << " are read without the toolkit\n";
  EXPECT_GT(withoutToolkit, count / 10);
}
