// SPDX-License-Identifier: Apache-2.0
#include "merged.hpp"
#include "support.hpp"

#include <package/interop/xovalue.hpp>

#include <boost/bind/bind.hpp>

using namespace vesk;
using XO::XOValue;

namespace
{
template <typename Handle>
XOValue variantOf(Handle handle)
{
  XOValue value;
  handle.toXOValue(value);
  return value;
}
XOValue variantOf(const DialogInfo& dialog) { return dialog.toXOValue(); }

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

/// Checks what is read of arrays of all sizes, of which those from \p least to \p most give more
/// than nothing, and of parts of every kind.
template <typename Handle>
void expectParts(int least, int most)
{
  const auto original = filled<Handle, KeptValues>();
  const XOValue whole = variantOf(original);
  const Json all = heldIn(original);
  const Json nothing = heldIn(Handle());
  const std::vector<std::string>& names = AnyConstReference(Handle()).memberNames();
  for (int size = 0; size <= 25; ++size)
  {
    Json expected = size < least || size > most ? nothing : all;
    for (auto i = static_cast<std::size_t>(size); i < names.size(); ++i)
    {
      expected[names[i]] = nothing[names[i]];
    }
    EXPECT_EQ(heldIn(Handle(resized(whole, size))), expected) << size;
  }
  for (const XOValue& other : {XOValue(), XOValue(true), XOValue("a text of 18 chars")})
  {
    EXPECT_EQ(heldIn(Handle(other)), nothing) << other;
    for (std::size_t i = 0; i < names.size(); ++i)
    {
      XOValue value = whole;
      value[static_cast<int>(i)][1] = other;
      Json expected = all;
      Json& part = expected[names[i]];
      part.clear();
      part = part.is_boolean()                              ? Json(other.toBool())
             : part.is_string() && names[i] != "categories" ? Json(other.toString())
                                                            : part;
      EXPECT_EQ(heldIn(Handle(value)), expected) << names[i] << other;
    }
  }
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

TEST(Variant, ReadsAnyLengthAndAnyPart)
{
  expectParts<PackageInfo>(18, 20);
  expectParts<BehaviorInfo>(0, 25);
  expectParts<DialogInfo>(3, 3);
  expectParts<LanguageInfo>(0, 25);
}

TEST(Variant, ReadsPackagesDialogsAndLanguagesByPosition)
{
  XOValue value = variantOf(filled<PackageInfo, KeptValues>());
  std::swap(value[2], value[3]);
  value[0][0] = true; // names do not count
  value[18][1][0][0][0] = "other";
  value[12][1][0][0][0] = "other";
  Json expected = heldIn(filled<PackageInfo, KeptValues>());
  std::swap(expected["version"], expected["channel"]);
  EXPECT_EQ(heldIn(PackageInfo(value)), expected);
}

TEST(Variant, ReadsBehaviorsByName)
{
  const auto behavior = filled<BehaviorInfo, KeptValues>();
  XOValue value = variantOf(behavior);
  XOValue twice; // backwards, each pair twice, and one that nothing is known of
  twice.arraySetSize(23);
  for (int i = 0; i < 11; ++i)
  {
    twice[2 * i] = value[10 - i];
    twice[2 * i + 1] = value[10 - i];
  }
  twice[22].arraySetSize(2);
  twice[22][0] = "unknown";
  EXPECT_EQ(heldIn(BehaviorInfo(twice)), merged(heldIn(behavior), heldIn(behavior)));

  AnyValue repeating(behavior);
  repeating.member("permissions").set(std::vector<std::string>{"A", "A", "B", "A"});
  value = variantOf(repeating.as<BehaviorInfo>());
  EXPECT_THAT(BehaviorInfo(value).permissions(), testing::ElementsAre("A", "B", "A"));
}

TEST(Variant, AddsToWhatIsThere)
{
  const auto original = filled<PackageInfo, KeptValues>();
  const XOValue value = variantOf(original);
  for (int size = 0; size <= 25; ++size)
  {
    auto package = filled<PackageInfo>(DistinctValues(1000));
    Json added = heldIn(original);
    for (auto i = static_cast<std::size_t>(size); i < 20; ++i)
    {
      added[AnyConstReference(package).memberNames()[i]].clear();
    }
    if (size > 20)
    {
      added["descriptionLanguages"].clear();
    }
    const Json expected = merged(heldIn(package), added);
    fromXOValue(package, resized(value, size));
    EXPECT_EQ(heldIn(package), expected) << size;
  }

  using boost::placeholders::_1;
  PackageInfo other;
  fromXOValue<DialogInfo>(boost::bind(&PackageInfo::addDialog, &other, _1), value[18][1]);
  EXPECT_EQ(other.dialogs(), original.dialogs());
  std::string called;
  fromXOValue(boost::function<void(const std::string&, const std::string&)>(
                  [&called](const std::string& text, const std::string& language)
                  { called += language + '=' + text + ' '; }),
              value[8][1]);
  EXPECT_EQ(called, "de=text 10 en_US=text 9 fr=text 11 ");
}
