// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <vesk/anyvalue.hpp>

using namespace vesk;

namespace
{
struct Motor
{
  std::string name = "none";
  std::list<double> limits{1.0};
};
struct Arm
{
  std::vector<Motor> motors;
  AnyValue extra;
};
/// As another program has them.
struct OtherMotor
{
  std::vector<int> limits;
  AnyValue name;
};
struct OtherArm
{
  std::list<OtherMotor> motors;
  std::map<std::string, AnyValue> extra;
};
struct Tree
{
  std::vector<Tree> branches;
};
using Names = std::map<std::string, std::string>;

template <typename Target>
std::string whyNot(const AnyConstReference& source)
{
  return thrown<ConversionError>([&source] { source.to<Target>(); });
}
} // namespace

namespace vesk
{
template <>
struct StructDescription<Motor>
{
  static constexpr auto name = "Motor";
  static constexpr auto members =
      std::make_tuple(member("name", &Motor::name), member("limits", &Motor::limits));
};
template <>
struct StructDescription<Arm>
{
  static constexpr auto name = "Arm";
  static constexpr auto members =
      std::make_tuple(member("motors", &Arm::motors), member("extra", &Arm::extra));
};
template <>
struct StructDescription<Tree>
{
  static constexpr auto name = "Tree";
  static constexpr auto members = std::make_tuple(member("branches", &Tree::branches));
};
template <>
struct StructDescription<OtherMotor>
{
  static constexpr auto name = "OtherMotor";
  static constexpr auto members =
      std::make_tuple(member("limits", &OtherMotor::limits), member("name", &OtherMotor::name));
};
template <>
struct StructDescription<OtherArm>
{
  static constexpr auto name = "OtherArm";
  static constexpr auto members =
      std::make_tuple(member("extra", &OtherArm::extra), member("motors", &OtherArm::motors));
};
} // namespace vesk

TEST(AnyValue, OwnsAValueOfAnyType)
{
  AnyValue value(Motor{"left", {}});
  AnyValue copy(value);
  copy.as<Motor>().name = "right";
  EXPECT_EQ(value.as<Motor>().name, "left");
  EXPECT_TRUE(value.is<Motor>());
  EXPECT_EQ(value.type(), typeOf<Motor>());
  EXPECT_THROW(value.as<std::string>(), ConversionError);

  const void* const address = value.reference().address();
  const AnyValue moved(std::move(value));
  EXPECT_EQ(moved.reference().address(), address);
  EXPECT_FALSE(value.isValid()); // NOLINT(bugprone-use-after-move): it says so
  EXPECT_EQ(value.type(), nullptr);
  EXPECT_THROW(value.as<Motor>(), ConversionError);
  EXPECT_THROW(value.to<Motor>(), ConversionError);
  value = copy;
  EXPECT_EQ(value.as<Motor>().name, "right");
  EXPECT_EQ(AnyValue("text").as<std::string>(), "text");

  AnyValue nested(Arm{{}, Motor{"part", {}}});
  nested = nested.as<Arm>().extra; // a part of itself
  EXPECT_EQ(nested.as<Motor>().name, "part");
}

TEST(AnyValue, ReachesIntoItsValue)
{
  AnyValue value(Arm{{Motor{"a", {}}, Motor{"b", {1, 2}}}, Names{{"en", "Arm"}, {"fr", "Bras"}}});
  EXPECT_EQ(value.member("motors").size(), 2U);
  EXPECT_EQ(value.member(0).element(1).member("limits").elements().at(1).as<double>(), 2);
  value.member("motors").element(0).member("name").set("changed");
  value.member("motors").elements().at(1).member("limits").set(std::vector<int>{7});
  EXPECT_EQ(value.as<Arm>().motors.at(0).name, "changed");
  EXPECT_EQ(value.as<Arm>().motors.at(1).limits, std::list<double>{7});

  const AnyReference names(value.member("extra").as<AnyValue>());
  names.find("fr").set("Le bras");
  EXPECT_EQ(names.as<Names>()["fr"], "Le bras");
  EXPECT_FALSE(names.find("de").isValid());
  EXPECT_EQ(names.size(), 2U);
  names.entries().at(0).second.set("The arm");
  EXPECT_EQ(std::as_const(value).member("extra").as<AnyValue>().find("en").as<std::string>(),
            "The arm");
  EXPECT_EQ(names.entries().at(1).first.as<std::string>(), "fr");

  EXPECT_THROW(value.member("wheels"), std::out_of_range);
  EXPECT_THROW(value.member(2), std::out_of_range);
  EXPECT_THROW(value.member("motors").element(2), std::out_of_range);
  EXPECT_THROW(value.element(0), ConversionError);
  EXPECT_THROW(value.size(), ConversionError);
  EXPECT_THROW(value.find("x"), ConversionError);
  EXPECT_THROW(names.member(0), ConversionError);
  EXPECT_THROW(AnyValue().member("x"), ConversionError);
}

TEST(AnyValue, ConvertsAtAnyDepth)
{
  const Arm arm{{Motor{"a", {1, 2}}, Motor{"b", {}}}, Names{{"en", "Arm"}}};
  const auto other = AnyConstReference(arm).to<OtherArm>();
  ASSERT_EQ(other.motors.size(), 2U);
  EXPECT_EQ(other.motors.front().limits, (std::vector<int>{1, 2}));
  EXPECT_EQ(other.motors.back().name.as<std::string>(), "b");
  EXPECT_EQ(other.extra.at("en").as<std::string>(), "Arm");
  const auto back = AnyConstReference(other).to<Arm>();
  EXPECT_EQ(back.motors.at(0).limits, (std::list<double>{1, 2}));
  EXPECT_EQ(back.motors.at(1).limits, std::list<double>()); // nothing of the default's own

  const auto members = AnyConstReference(arm).to<std::map<std::string, AnyValue>>();
  EXPECT_EQ(members.size(), 2U);
  EXPECT_EQ(AnyConstReference(members).to<Arm>().motors.at(0).name, "a");

  using Pair = std::pair<std::vector<int>, AnyValue>;
  const auto pair = AnyValue(Pair{{1, 2}, "x"}).to<std::pair<std::list<double>, std::string>>();
  EXPECT_EQ(pair.first, (std::list<double>{1, 2}));
  EXPECT_EQ(pair.second, "x");
  const auto map = AnyValue(std::map<int, float>{{1, 2.5F}}).to<std::map<double, double>>();
  EXPECT_EQ(map, (std::map<double, double>{{1, 2.5}}));
  EXPECT_EQ(AnyConstReference(map).find(AnyConstReference(1)).as<double>(), 2.5);
  EXPECT_EQ(AnyValue(AnyValue(5)).to<int>(), 5);
}

TEST(AnyValue, SaysWhatCannotBeConverted)
{
  Arm arm{{Motor{"a", {}}, Motor{"b", {1, 2.5}}}, Names()};
  EXPECT_EQ(whyNot<OtherArm>(AnyConstReference(arm)),
            "cannot convert Arm to OtherArm: motors[1].limits[1]: 2.5 does not fit into int32");
  arm.motors.clear();
  arm.extra = std::map<std::string, Motor>{{"x", {}}};
  EXPECT_EQ(whyNot<OtherArm>(AnyConstReference(arm)), "");
  EXPECT_EQ(whyNot<Names>(AnyConstReference(arm)),
            "cannot convert Arm to map<string, string>: motors: list<Motor> is no string");
  const AnyValue strange(std::map<std::string, AnyValue>{{"name", 1}, {"wheels", 2}});
  EXPECT_EQ(whyNot<Motor>(strange), "cannot convert map<string, dynamic> to Motor: without "
                                    "\"limits\" and with a surplus \"wheels\"");
  EXPECT_EQ(whyNot<int>(AnyValue()), "cannot convert nothing to int32");
  EXPECT_EQ(whyNot<std::list<int>>(AnyValue(std::list<AnyValue>(1))),
            "cannot convert list<dynamic> to list<int32>: [0]: there is no value");
  EXPECT_THROW(AnyReference().set(5), ConversionError);
  using Texts = std::map<int, std::string>;
  EXPECT_EQ(whyNot<Texts>(AnyValue(std::map<int, AnyValue>{{5, "x"}, {6, true}})),
            "cannot convert map<int32, dynamic> to map<int32, string>: [1]: bool is no string");

  EXPECT_EQ(
      (whyNot<std::map<float, int>>(AnyValue(std::map<long, int>{{16777216, 1}, {16777217, 2}}))),
      "cannot convert map<int64, int32> to map<float32, int32>: [1]: two keys become one");

  AnyValue target(Motor{"kept", {1}});
  EXPECT_THROW(target.reference().set(OtherMotor{{1, 2}, 5}), ConversionError);
  EXPECT_EQ(target.as<Motor>().limits, std::list<double>{1});
}

// Values hold values, and so on as deep as strangers like.
TEST(AnyValue, RefusesToCopyOrConvertWhatIsNestedDeep)
{
  const auto nested = [](int depth, const auto& around)
  {
    AnyValue value("innermost");
    for (int i = 0; i < depth; ++i)
    {
      value = around(std::move(value));
    }
    return value;
  };
  const auto inList = [](AnyValue value)
  {
    std::vector<AnyValue> list(1);
    list[0] = std::move(value);
    return AnyValue(std::move(list));
  };
  const auto inValue = [](AnyValue value)
  {
    AnyValue around(*typeOf<AnyValue>());
    around.as<AnyValue>() = std::move(value);
    return around;
  };
  const auto inTree = [&inList](AnyValue value)
  {
    AnyValue tree{std::map<std::string, AnyValue>{{"branches", {}}}};
    tree.as<std::map<std::string, AnyValue>>()["branches"] = inList(std::move(value));
    return tree;
  };
  const AnyValue deepest = nested(127, inList);
  EXPECT_EQ(AnyValue(deepest.reference()).size(), 1U);
  const AnyValue deep = nested(200000, inList);
  AnyValue kept("kept");
  EXPECT_THROW(kept = deep, ConversionError);
  EXPECT_EQ(kept.as<std::string>(), "kept");
  EXPECT_EQ(nested(200000, inValue).to<std::string>(), "innermost");
  EXPECT_THROW(deep.to<std::list<AnyValue>>(), ConversionError);
  const AnyValue leaf(Tree{});
  EXPECT_EQ(inTree(inTree(leaf)).to<Tree>().branches.at(0).branches.size(), 1U);
  AnyValue tree(leaf);
  for (int i = 0; i < 200000; ++i)
  {
    tree = inTree(std::move(tree));
  }
  EXPECT_THROW(tree.to<Tree>(), ConversionError);
}
