// SPDX-License-Identifier: Apache-2.0
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/interop/xovalue.hpp>

#include <boost/bind/bind.hpp>

using namespace vesk;
using XO::XOValue;

namespace
{
using Texts = std::map<std::string, std::string>;

XOValue variantOf(PackageInfo package)
{
  XOValue value;
  package.toXOValue(value);
  return value;
}

/// The first \p size entries of an array, and empty pairs beyond its end.
XOValue resized(const XOValue& value, int size)
{
  XOValue made;
  made.arraySetSize(size);
  for (int i = 0; i < size; ++i)
  {
    made[i] = value[i];
  }
  return made;
}
} // namespace

TEST(Variant, HasTheLayoutThatModulesRelyOn)
{
  static_assert(std::is_convertible_v<const XOValue&, PackageInfo> &&
                std::is_convertible_v<const XOValue&, BehaviorInfo> &&
                std::is_convertible_v<const XOValue&, DialogInfo> &&
                std::is_convertible_v<const XOValue&, LanguageInfo>);
  EXPECT_EQ(printed(variantOf(filled<PackageInfo>())) + "\n",
            contentOf(GOLDEN_FILES "/filled.variant.json"));
  EXPECT_EQ(printed(variantOf(PackageInfo())), "[]");
}

TEST(Variant, MakesTheRoundTrip)
{
  auto package = filled<PackageInfo>();
  PackageInfo read(variantOf(package));
  EXPECT_NE(contentIn(read), contentIn(package));
  for (BehaviorInfo& behavior : package.behaviors())
  {
    AnyReference(behavior).member("categories").set(""); // does not travel
  }
  EXPECT_EQ(contentIn(read), contentIn(package));
  for (const std::string& path : exampleManifests())
  {
    PackageInfo example;
    ASSERT_TRUE(example.loadFromManifestFile(path));
    EXPECT_EQ(contentIn(PackageInfo(variantOf(example))), contentIn(example));
  }
}

TEST(Variant, ReadsPackagesOf18To20Pairs)
{
  const XOValue whole = variantOf(filled<PackageInfo>());
  const std::string empty = contentIn(PackageInfo());
  for (int size = 0; size <= 25; ++size)
  {
    const XOValue value = resized(whole, size);
    const PackageInfo package(value);
    EXPECT_EQ(contentIn(package) == empty, size < 18 || size > 20) << size;
    EXPECT_EQ(package.dialogs().size(), size == 19 || size == 20 ? 3U : 0U) << size;
    EXPECT_EQ(package.descriptionLanguages().size(), size == 20 ? 3U : 0U) << size;

    PackageInfo direct;
    fromXOValue(direct, value);
    EXPECT_EQ(direct.uuid().empty(), size == 0) << size;
    EXPECT_EQ(direct.dialogs().size(), size >= 19 ? 3U : 0U) << size;
    EXPECT_EQ(direct.descriptionLanguages().size(), size == 20 ? 3U : 0U) << size;
  }
}

TEST(Variant, ReadsPackagesDialogsAndLanguagesByPosition)
{
  PackageInfo original;
  original.setUuid("u");
  original.setVersion("1");
  original.setChannel("c");
  XOValue value = variantOf(original);
  std::swap(value[2], value[3]);
  value[0][0] = true; // names do not count
  const PackageInfo package(value);
  EXPECT_EQ(package.version() + package.channel() + package.uuid(), "c1u");

  XOValue dialog = filled<DialogInfo>().toXOValue();
  dialog[0][0] = "other";
  EXPECT_EQ(DialogInfo(dialog), filled<DialogInfo>());
  EXPECT_EQ(DialogInfo(resized(dialog, 2)), DialogInfo());
  EXPECT_EQ(DialogInfo(resized(dialog, 4)), DialogInfo());
  XOValue language;
  filled<LanguageInfo>().toXOValue(language);
  EXPECT_EQ(contentIn(LanguageInfo(resized(language, 9))), contentIn(filled<LanguageInfo>()));
  EXPECT_EQ(LanguageInfo(resized(language, 2)).engineName(), filled<LanguageInfo>().engineName());
  EXPECT_EQ(LanguageInfo(resized(language, 2)).locale(), "");
}

TEST(Variant, ReadsBehaviorsByName)
{
  const auto behavior = filled<BehaviorInfo>();
  XOValue value;
  behavior.toXOValue(value);
  XOValue twice; // backwards, each pair twice, and one that nothing is known of
  twice.arraySetSize(23);
  for (int i = 0; i < 11; ++i)
  {
    twice[2 * i] = value[10 - i];
    twice[2 * i + 1] = value[10 - i];
  }
  twice[22].arraySetSize(2);
  twice[22][0] = "unknown";
  const BehaviorInfo read(twice);
  EXPECT_EQ(read.path() + read.nature(), behavior.path() + behavior.nature());
  EXPECT_EQ(read.names(), behavior.names());
  EXPECT_EQ(read.tags("de").size(), 6U);
  EXPECT_EQ(read.tags("de").front(), behavior.tags("de").front());

  AnyValue repeating(behavior);
  repeating.member("permissions").set(std::vector<std::string>{"A", "A", "B", "A"});
  repeating.as<BehaviorInfo>().toXOValue(value);
  EXPECT_THAT(BehaviorInfo(value).permissions(), testing::ElementsAre("A", "B", "A"));
}

TEST(Variant, AddsToWhatIsThere)
{
  auto package = filled<PackageInfo>();
  package.setName("stays", "it");
  const XOValue value = variantOf(filled<PackageInfo>());
  fromXOValue(package, value);
  EXPECT_EQ(package.names().size(), 4U);
  EXPECT_EQ(package.behaviors().size(), 6U);
  EXPECT_EQ(package.services().size(), 6U);
  EXPECT_EQ(package.supportedLanguages().size(), 3U); // no duplicates

  Texts texts{{"en_US", "old"}};
  std::map<std::string, std::list<std::string>> lists{{"de", {"first"}}};
  std::list<std::string> list{"first"};
  fromXOValue(texts, value[8][1]);
  fromXOValue(lists, value[11][1][0][5][1]);
  fromXOValue(list, value[17][1]);
  EXPECT_EQ(texts, filled<PackageInfo>().names());
  EXPECT_EQ(lists["de"].size(), 4U);
  EXPECT_EQ(list.size(), 4U);

  using boost::placeholders::_1;
  PackageInfo other;
  fromXOValue<DialogInfo>(boost::bind(&PackageInfo::addDialog, &other, _1), value[18][1]);
  EXPECT_EQ(other.dialogs(), filled<PackageInfo>().dialogs());
  std::string called;
  fromXOValue(boost::function<void(const std::string&, const std::string&)>(
                  [&called](const std::string& text, const std::string& language)
                  { called += language + '=' + text + ' '; }),
              value[8][1]);
  EXPECT_EQ(called, "de=text 10 en_US=text 9 fr=text 11 ");
}
