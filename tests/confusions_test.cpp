// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <check/confusions.hpp>
#include <format/format.hpp>
#include <format/nearest.hpp>

#include <algorithm>
#include <map>
#include <random>
#include <set>

using vesk::check::isSurelyMeant;
using vesk::check::probablyMeant;
using vesk::check::usuallyMeant;

namespace
{
QString joined(const std::vector<QString>& names)
{
  return QStringList(QList<QString>(names.begin(), names.end())).join(' ');
}

std::vector<QString> split(const QString& names)
{
  const QStringList parts = names.split(' ');
  return {parts.begin(), parts.end()};
}

std::vector<std::string> wordsOf(const std::string& letters, std::size_t longest)
{
  std::vector<std::string> words{""};
  for (std::size_t i = 0; words[i].size() < longest; ++i)
  {
    for (const char letter : letters)
    {
      words.push_back(words[i] + letter);
    }
  }
  return words;
}

/// A word and all that it becomes by a swap of neighbours or, when the longer of the two words has more
/// than five letters, by one letter more, less or another.
std::set<std::string> slipsOf(const std::string& word, const std::string& letters)
{
  std::set<std::string> slips{word};
  for (std::size_t at = 0; at <= word.size(); ++at)
  {
    const std::string before = word.substr(0, at);
    const std::string behind = word.substr(at);
    if (behind.size() > 1)
    {
      slips.insert(before + behind[1] + behind[0] + behind.substr(2));
    }
    if (word.size() > 5 && !behind.empty())
    {
      slips.insert(before + behind.substr(1));
    }
    for (const char letter : letters)
    {
      if (word.size() > 4)
      {
        slips.insert(std::string(before).append(1, letter).append(behind));
      }
      if (word.size() > 5 && !behind.empty())
      {
        slips.insert(before + letter + behind.substr(1));
      }
    }
  }
  return slips;
}

/// What it costs to make one word of another by its rule: so much for each letter that differs only in
/// case, is another, is more or less, or has changed places with its neighbour.
int costOf(const std::string& from, const std::string& to)
{
  if (from.empty() || to.empty())
  {
    return 65 * static_cast<int>(from.size() + to.size());
  }
  const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
  const auto alike = [&lower](char a, char b) { return lower(a) == lower(b); };
  const int replacing = from[0] == to[0] ? 0 : alike(from[0], to[0]) ? 1 : 65;
  int cost = replacing + costOf(from.substr(1), to.substr(1));
  if (replacing != 0)
  {
    cost = std::min({cost, 65 + costOf(from.substr(1), to), 65 + costOf(from, to.substr(1))});
  }
  if (from.size() > 1 && to.size() > 1 && alike(from[0], to[1]) && alike(from[1], to[0]))
  {
    cost = std::min(cost, 65 + costOf(from.substr(2), to.substr(2)));
  }
  return cost;
}
} // namespace

TEST(Confusions, TellWhatIsMeant)
{
  struct Case
  {
    const char* written;
    const char* known;
    const char* usual;
    const char* probable;
  };
  for (const auto& [written, known, usual, probable] : {
           Case{"id", "uuid version", "uuid", "uuid"},
           Case{"ID", "uuid name", "uuid name", "uuid name"},
           Case{"Id", "path", "", ""},
           Case{"Name", "name topicName model", "topicName model", "name"},
           Case{"name", "topicName model", "topicName model", "topicName model"},
           Case{"xml:lang", "lang language", "lang language", "lang language"},
           Case{"xml:lan", "lang", "", ""},
           Case{"lagn", "lang language", "", "lang"},
           Case{"maxversion", "minVersion maxVersion", "", "maxVersion"},
           Case{"maxversion", "maxHeadVersion maxBodyVersion", "maxHeadVersion maxBodyVersion",
                "maxHeadVersion maxBodyVersion"},
           Case{"comand", "execStart name", "", "execStart"},
           Case{"behaviour", "behaviorContent dialogContent", "behaviorContent", "behaviorContent"},
           Case{"", "uuid", "", ""},
           Case{"quite", "uuid version", "", ""},
       })
  {
    EXPECT_EQ(joined(usuallyMeant(written, split(known))).toStdString(), usual) << written;
    EXPECT_EQ(joined(probablyMeant(written, split(known))).toStdString(), probable) << written;
  }
}

TEST(Confusions, AreSureForOneSlip)
{
  const std::string letters = "ab";
  const std::vector<std::string> words = wordsOf(letters, 7);
  for (const std::string& word : words)
  {
    const std::set<std::string> slips = slipsOf(word, letters);
    for (const std::string& other : words)
    {
      ASSERT_EQ(isSurelyMeant(QString::fromStdString(other), QString::fromStdString(word)),
                slips.count(other) == 1)
          << word << ' ' << other;
    }
  }
}

// No name that the format has in a place is taken for another one that it has there as well.
TEST(Confusions, LeaveTheFormatsOwnNamesAlone)
{
  const auto expectApart = [](const vesk::format::Element& element, const auto& entries)
  {
    for (const auto& one : entries)
    {
      for (const auto& other : entries)
      {
        EXPECT_EQ(
            isSurelyMeant(QString::fromStdString(one.name), QString::fromStdString(other.name)),
            &one == &other)
            << element.name << ": " << one.name << ' ' << other.name;
      }
    }
  };
  const std::function<void(const vesk::format::Element&)> expectAllApart =
      [&](const vesk::format::Element& element)
  {
    expectApart(element, element.attributes);
    expectApart(element, element.children);
    std::for_each(element.children.begin(), element.children.end(), expectAllApart);
  };
  expectAllApart(vesk::format::package());
}

TEST(Nearest, AreThoseOfLeastCost)
{
  const std::vector<std::string> words = wordsOf("aAb", 6);
  std::mt19937 random(3);
  for (int i = 0; i < 300; ++i)
  {
    const std::string written = words[random() % words.size()];
    std::vector<std::string> names(4);
    std::generate(names.begin(), names.end(), [&] { return words[random() % words.size()]; });
    std::map<int, std::vector<std::string>> byCost;
    for (const std::string& name : names)
    {
      const int cost = costOf(written, name);
      if (cost / 65 <= static_cast<int>(std::max(written.size(), name.size()) / 3))
      {
        byCost[cost].push_back(name);
      }
    }
    EXPECT_EQ(vesk::format::nearest(written, names),
              byCost.empty() ? std::vector<std::string>() : byCost.begin()->second)
        << written << ' ' << testing::PrintToString(names);
  }
}
