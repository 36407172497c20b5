// SPDX-License-Identifier: Apache-2.0
#include "merged.hpp"

#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>

#include <gtest/gtest.h>

using namespace vesk;

namespace
{
/// Those of six languages that \p bits choose; some begin with others, which may come later.
std::list<std::string> languagesOf(unsigned bits)
{
  std::list<std::string> chosen;
  for (const char* const language : {"en_US", "fr_FR", "en", "", "en_GB", "e"})
  {
    if ((std::exchange(bits, bits / 2) & 1U) != 0)
    {
      chosen.emplace_back(language);
    }
  }
  return chosen;
}

/// Fills maps with an entry for each of the languages.
struct AllLanguages : DistinctValues
{
  static int length(const std::string&) { return 1; }
  static std::list<std::string> keys() { return languagesOf(0x3F); }
};

/// Drops of each map that is trimmed the keys that begin with none of its languages.
void trimPlainly(Json& record, const PackageInfo& package)
{
  const auto& described = package.descriptionLanguages();
  const auto& supported = package.supportedLanguages();
  for (const auto& [member, kept] :
       {std::pair("langToName", described), std::pair("langToDesc", described),
        std::pair("langToTags", supported), std::pair("langToTriggerSentences", supported),
        std::pair("langToLoadingResponses", supported)})
  {
    for (const std::string& key : AllLanguages::keys())
    {
      if (record.contains(member) &&
          std::none_of(kept.begin(), kept.end(),
                       [&key](const std::string& language) { return key.rfind(language, 0) == 0; }))
      {
        record[member].erase(key);
      }
    }
  }
}
} // namespace

TEST(Trimming, KeepsWhatBeginsWithALanguage)
{
  auto original = filled<PackageInfo, AllLanguages>();
  for (unsigned bits = 0; bits <= 0x3F; ++bits)
  {
    recordOf(original).descriptionLanguages = languagesOf(bits);
    recordOf(original).supportedLanguages = languagesOf(bits * 5 % 0x40);
    Json expected = heldIn(original);
    trimPlainly(expected, original);
    trimPlainly(expected["behaviors"][0], original);
    PackageInfo trimmed(original);
    trimmed.trimExtraInfo();
    EXPECT_EQ(heldIn(trimmed), expected);
  }
}
