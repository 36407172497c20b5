// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <xovalue/xovalue.hpp>

using XO::XOValue;

namespace
{
XOValue array(std::initializer_list<XOValue> values)
{
  XOValue made;
  made.arraySetSize(static_cast<int>(values.size()));
  std::copy(values.begin(), values.end(), made.begin());
  return made;
}
} // namespace

TEST(XOValue, ReadsAsEmptyWhatItIsNot)
{
  const XOValue empty;
  const XOValue text("text");
  const XOValue flag(true);
  const XOValue pair = array({"a", false});
  for (const XOValue& value : {empty, text, flag, pair})
  {
    EXPECT_EQ(value.isValid(), value != empty);
    EXPECT_EQ(static_cast<const std::string&>(value), value == text ? "text" : "");
    EXPECT_EQ(static_cast<bool>(value), value == flag);
    EXPECT_EQ(value.isArray(), value == pair);
    EXPECT_EQ(value.getSize(), value == pair ? 2 : 0);
    EXPECT_EQ(value.end() - value.begin(), value.getSize());
    for (const int index : {-1, 2, 1000000})
    {
      EXPECT_FALSE(value[index].isValid());
      EXPECT_FALSE(value[index][index].isValid());
      XOValue copy(value);
      EXPECT_THROW(copy[index] = "x", std::out_of_range);
    }
  }
  EXPECT_TRUE(array({}).isValid());
  EXPECT_NE(flag, XOValue(false));
  XOValue negative(flag);
  EXPECT_THROW(negative.arraySetSize(-1), std::out_of_range);
  EXPECT_EQ(negative, flag);
}

TEST(XOValue, TakesNoPointerOrNumberForABool)
{
  const char* const null = nullptr;
  XOValue assigned(true);
  assigned = "text";
  EXPECT_TRUE(assigned.isString());
  assigned = null;
  EXPECT_EQ(assigned, XOValue(""));
  assigned = false;
  EXPECT_TRUE(assigned.isBool());
  assigned = {};
  EXPECT_FALSE(assigned.isValid());
  EXPECT_EQ(XOValue(null), XOValue(std::string()));
  EXPECT_TRUE(XOValue("").isString());
  static_assert(!std::is_constructible_v<XOValue, int>);
  static_assert(!std::is_constructible_v<XOValue, double>);
  static_assert(!std::is_constructible_v<XOValue, void*>);
  static_assert(!std::is_constructible_v<XOValue, std::nullptr_t>);
  static_assert(!std::is_assignable_v<XOValue, std::nullptr_t>);
  static_assert(std::is_convertible_v<XOValue, bool>);
  static_assert(!std::is_convertible_v<XOValue, int>);
  std::string text;
  text = XOValue("text"); // and not by way of a bool and a char
  EXPECT_EQ(text, "text");
}

TEST(XOValue, IsAValue)
{
  XOValue pair = array({"en_US", array({"a", "b"})});
  XOValue copy(pair);
  copy[1][0] = "changed";
  EXPECT_EQ(pair[1][0], XOValue("a"));
  EXPECT_NE(copy, pair);
  EXPECT_NE(array({"a"}), array({"a", {}}));

  XOValue moved(std::move(copy));
  EXPECT_FALSE(copy.isValid()); // NOLINT(bugprone-use-after-move): it says so
  EXPECT_EQ(moved[1][0], XOValue("changed"));
  const XOValue copied(moved);
  const XOValue part(std::move(moved[1]));
  EXPECT_EQ(copied, array({"en_US", array({"changed", "b"})}));
  EXPECT_EQ(moved, array({"en_US", {}}));
  moved.arraySetSize(1);
  EXPECT_EQ(moved, array({{}}));
  EXPECT_EQ(part, array({"changed", "b"})); // outlives the array it was in

  pair = pair[1]; // a part of itself
  EXPECT_EQ(pair, array({"a", "b"}));
  pair = std::move(pair[1]);
  EXPECT_EQ(pair, XOValue("b"));
  pair = array({std::string(100, 'x')});
  pair = static_cast<const std::string&>(pair[0]);
  EXPECT_EQ(pair, XOValue(std::string(100, 'x')));
  pair = *&pair;
  EXPECT_EQ(pair, XOValue(std::string(100, 'x')));
}

TEST(XOValue, MayBeNestedAsDeepAsStrangersLike)
{
  onSmallStack(
      []
      {
        XOValue value("innermost");
        for (int depth = 0; depth < 100000; ++depth)
        {
          XOValue around;
          around.arraySetSize(1 + depth % 3);
          around[depth % 2 == 0 ? 0 : around.getSize() - 1] = std::move(value);
          value = std::move(around);
        }
        XOValue copy(value);
        EXPECT_EQ(copy, value);
        EXPECT_LT(printed(copy).size(), 100000 * 400U);
      });
}

TEST(XOValue, Prints)
{
  EXPECT_EQ(printed(XOValue()), "null");
  EXPECT_EQ(printed(array({"a\"\\\n\x01é", true, false, {}})),
            R"(["a\"\\\u000a\u0001é", true, false, null])");
  EXPECT_EQ(printed(array({})), "[]");
  EXPECT_EQ(printed(array({"names", array({array({"en", "Hi"}), array({})})})), R"([
  "names",
  [
    ["en", "Hi"],
    []
  ]
])");
}
