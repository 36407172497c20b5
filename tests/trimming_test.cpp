// SPDX-License-Identifier: Apache-2.0
// Trimming beside a plain model: a key stays if a language is a beginning of it.
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/behaviorinfo_p.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>

using namespace vesk;
using Languages = std::list<std::string>;

namespace
{
/// Those of eight languages that \p bits choose, in an order in which none need come before what
/// begins with it.
Languages languagesOf(unsigned bits)
{
  Languages chosen;
  for (const char* const language : {"en_US", "e", "fr_FR", "en", "", "en_GB", "fr", "en_"})
  {
    if ((bits & 1U) != 0)
    {
      chosen.emplace_back(language);
    }
    bits >>= 1U;
  }
  return chosen;
}

/// Fills all that is trimmed with an entry for each of the languages.
struct AllLanguages : DistinctValues
{
  static int length(const std::string&) { return 1; }
  static std::vector<std::string> keys()
  {
    const Languages all = languagesOf(0xFF);
    return {all.begin(), all.end()};
  }
};

/// What trimming is to make of a record.
template <typename Record>
void trimPlainly(Record& record, const Languages& described, const Languages& supported)
{
  const auto trim = [&](const auto& member, int)
  {
    if constexpr (isMap<std::decay_t<decltype(record.*member.pointer)>>)
    {
      const Languages& kept = member.keeps == Keeps::DescriptionLanguages ? described : supported;
      for (const std::string& key : AllLanguages::keys())
      {
        const auto isBeginning = [&key](const std::string& language)
        { return key.rfind(language, 0) == 0; };
        if (member.keeps != Keeps::All && std::none_of(kept.begin(), kept.end(), isBeginning))
        {
          (record.*member.pointer).erase(key);
        }
      }
    }
  };
  forEachMember<Record>(trim);
}
} // namespace

TEST(Trimming, KeepsWhatBeginsWithALanguage)
{
  const auto original = filled<PackageInfo, AllLanguages>();
  for (unsigned bits = 0; bits <= 0xFF; ++bits)
  {
    PackageInfo package(original);
    PackageInfoPrivate& record = recordOf(package);
    record.descriptionLanguages = languagesOf(bits);
    record.supportedLanguages = languagesOf(bits * 5 % 0x100);
    PackageInfo expected(package);
    package.trimExtraInfo();
    trimPlainly(recordOf(expected), record.descriptionLanguages, record.supportedLanguages);
    trimPlainly(recordOf(expected.behaviors().front()), record.descriptionLanguages,
                record.supportedLanguages);
    EXPECT_EQ(contentIn(package), contentIn(expected));
  }
}
