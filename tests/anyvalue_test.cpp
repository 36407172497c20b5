// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <vesk/anyvalue.hpp>
#include <vesk/runtimetypes.hpp>

#include <random>

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
  std::map<std::string, AnyValue> extra{{"of the default", 1}};
};
struct Unknown
{};
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
  AnyValue list(std::vector<AnyValue>{1});
  list.append(list);
  list.insert(0, list.element(1));
  EXPECT_EQ(printed(list), "[[1], 1, [1]]");
  list.reset();
  EXPECT_FALSE(list.isValid());
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

  EXPECT_THAT(value.memberNames(), testing::ElementsAre("motors", "extra"));

  auto& names = value.member("extra").as<AnyValue>();
  names.find("fr").set("Le bras");
  EXPECT_EQ(names.as<Names>()["fr"], "Le bras");
  EXPECT_FALSE(names.find("de").isValid());
  EXPECT_EQ(names.size(), 2U);
  names.entries().at(0).second.set("The arm");
  EXPECT_EQ(std::as_const(value).member("extra").as<AnyValue>().find("en").as<std::string>(),
            "The arm");
  EXPECT_EQ(names.entries().at(1).first.as<std::string>(), "fr");
}

TEST(AnyValue, SaysWhatItLacks)
{
  AnyValue arm(Arm{{Motor(), Motor()}, {}});
  AnyValue runtime(*describeStruct("Runtime", {{"a", typeOf<int>()}}));
  AnyValue list(*describeList(typeOf<int>()));
  AnyValue map(*describeMap(typeOf<int>(), typeOf<bool>()));
  AnyValue none;
  const AnyReference motors = arm.member("motors");
  const std::vector<std::pair<std::function<void()>, std::string>> lacking{
      {[&] { arm.member("wheels"); }, "Arm has no member \"wheels\""},
      {[&] { arm.member(99); }, "no member 99; there are 2"},
      {[&] { runtime.member(1); }, "no member 1; there is 1"},
      {[&] { motors.element(2); }, "no element 2; there are 2"},
      {[&] { motors.erase(2); }, "no element 2; there are 2"},
      {[&] { motors.insert(3, Motor()); }, "no place 3; there are 3"},
      {[&] { list.element(0); }, "no element 0; there are 0"},
      {[&] { list.erase(0); }, "no element 0; there are 0"},
      {[&] { list.insert(1, 5); }, "no place 1; there is 1"},
      {[&] { motors.erase(-1); }, "cannot convert int32 to uint64: -1 does not fit into uint64"},
      {[&] { motors.append(5); }, "cannot convert int32 to Motor: int32 is no Motor"},
      {[&] { map.find("x"); }, "cannot convert string to int32: string is no int32"},
      {[&] { map.insert(1, 5); }, "cannot convert int32 to bool: int32 is no bool"},
      {[&] { arm.element(0); }, "the value is Arm, no list"},
      {[&] { map.append(); }, "the value is map<int32, bool>, no list"},
      {[&] { arm.size(); }, "the value is Arm, no list or map"},
      {[&] { arm.clear(); }, "the value is Arm, no list or map"},
      {[&] { arm.find("x"); }, "the value is Arm, no map"},
      {[&] { motors.member(0); }, "the value is list<Motor>, no struct"},
      {[&] { none.member("x"); }, "the value is nothing, no struct"},
      {[&] { none.set(5); }, "cannot convert int32 to nothing: there is no value to replace"},
      {[&] { motors.as<Names>(); }, "the value is list<Motor>, not map<string, string>"}};
  for (const auto& [action, message] : lacking)
  {
    EXPECT_EQ(thrown<std::exception>(action), message);
  }
  EXPECT_EQ(motors.size() + list.size() + map.size(), 2U);
}

// The same changes to a list of each kind, and to a plain vector.
TEST(AnyValue, ChangesListsAsAVectorChanges)
{
  for (const TypeInterface* type : std::initializer_list<const TypeInterface*>{
           typeOf<std::vector<int>>(), typeOf<std::list<double>>(), describeList(typeOf<int>())})
  {
    AnyValue list(*type);
    std::vector<int> model;
    std::mt19937 random{1}; // NOLINT(cert-msc51-cpp): always the same changes
    for (int step = 0; step < 300; ++step)
    {
      const std::size_t place = random() % (model.size() + 1);
      const auto at = model.begin() + static_cast<std::ptrdiff_t>(place);
      switch (random() % 8)
      {
      case 0:
        EXPECT_EQ(list.append().to<int>(), 0);
        model.push_back(0);
        break;
      case 1:
      case 2:
        EXPECT_EQ(list.append(step).to<int>(), step);
        model.push_back(step);
        break;
      case 3:
      case 4:
        EXPECT_EQ(list.insert(place, AnyValue(step)).to<int>(), step);
        model.insert(at, step);
        break;
      case 5:
        list.elements().empty() ? list.clear() : list.elements().back().set(step);
        model.empty() ? model.clear() : static_cast<void>(model.back() = step);
        break;
      default:
        if (at != model.end())
        {
          EXPECT_TRUE(list.erase(place));
          model.erase(at);
        }
      }
      ASSERT_EQ(list.to<std::vector<int>>(), model) << type->name() << " after " << step;
    }
    list.clear();
    EXPECT_EQ(list.size(), 0U);
  }
}

TEST(AnyValue, ChangesMapsAsAMapChanges)
{
  const auto* const text = typeOf<std::string>();
  for (const TypeInterface* type : std::initializer_list<const TypeInterface*>{
           typeOf<std::map<int, std::string>>(), describeMap(typeOf<int>(), text),
           describeMap(typeOf<double>(), text), describeMap(text, text)})
  {
    AnyValue map(*type);
    std::map<std::string, std::string> model;
    for (const int number : {3, 1, 2, 1, -3, 9, -5, -1, 5, -9, 7, 1, 0, 3})
    {
      const std::string name = std::to_string(std::abs(number));
      const AnyValue key =
          type == describeMap(text, text) ? AnyValue(name) : AnyValue(std::abs(number));
      const std::string value = "set by " + std::to_string(number);
      EXPECT_EQ(map.find(key).isValid(), model.count(name) != 0);
      if (number < 0)
      {
        EXPECT_EQ(map.erase(key), model.erase(name) != 0);
      }
      else
      {
        EXPECT_EQ(map.insert(key, value), AnyConstReference(value));
        model[name] = value;
      }
      std::map<std::string, std::string> found;
      for (const auto& [itsKey, itsValue] : map.entries())
      {
        const std::string shown = printed(itsKey);
        found[shown.front() == '"' ? shown.substr(1, shown.size() - 2) : shown] =
            itsValue.as<std::string>();
      }
      EXPECT_EQ(found, model) << type->name();
    }
    const AnyValue copy(map);
    map.clear();
    EXPECT_EQ(map.size(), 0U);
    EXPECT_EQ(copy.size(), model.size());
  }
}

TEST(AnyValue, PrintsAndComparesByContent)
{
  AnyValue inner(*describeStruct("Runtime", {{"a", typeOf<int>()}}));
  const std::vector<std::pair<AnyValue, std::string>> values{
      {{}, "nothing"},
      {true, "true"},
      {false, "false"},
      {-5, "-5"},
      {std::uint64_t(5), "5"},
      {0.1, "0.1"},
      {"a\"b\n\x7fé", R"("a\"b\x0a\x7fé")"},
      {std::vector<int>(), "[]"},
      {std::vector<int>{1, 2}, "[1, 2]"},
      {std::list<int>{1, 2}, "[1, 2]"},
      {std::vector<int>{1}, "[1]"},
      {Names(), "{}"},
      {Names{{"en", "x"}, {"fr", ""}}, R"({"en": "x", "fr": ""})"},
      {Names{{"en", "x"}, {"de", ""}}, R"({"de": "", "en": "x"})"},
      {Motor{"a", {2.5}}, "Motor{name: \"a\", limits: [2.5]}"},
      {Motor{"b", {2.5}}, "Motor{name: \"b\", limits: [2.5]}"},
      {Arm{{Motor{"a", {}}}, 5}, "Arm{motors: [Motor{name: \"a\", limits: []}], extra: 5}"},
      {Arm{{Motor{"a", {}}}, {}}, "Arm{motors: [Motor{name: \"a\", limits: []}], extra: nothing}"},
      {std::pair(1, true), "pair<int32, bool>{first: 1, second: true}"},
      {inner, "Runtime{a: 0}"}};
  for (const auto& [value, text] : values)
  {
    EXPECT_EQ(printed(value), text);
    for (const auto& [other, otherText] : values)
    {
      EXPECT_EQ(AnyValue(value) == other, &value == &other) << text << " and " << otherText;
      EXPECT_EQ(AnyValue(value) != other, &value != &other) << text << " and " << otherText;
    }
  }
  const AnyValue undescribed{Unknown()};
  EXPECT_EQ(undescribed, undescribed);
  EXPECT_NE(undescribed, AnyValue(undescribed));
  EXPECT_EQ(printed(undescribed), "<(anonymous namespace)::Unknown>");
}

TEST(AnyValue, ConvertsAtAnyDepth)
{
  const Arm arm{{Motor{"a", {1, 2}}, Motor{"b", {}}}, Names{{"en", "Arm"}}};
  const auto other = AnyConstReference(arm).to<OtherArm>();
  ASSERT_EQ(other.motors.size(), 2U);
  EXPECT_EQ(other.motors.front().limits, (std::vector<int>{1, 2}));
  EXPECT_EQ(other.motors.back().name.as<std::string>(), "b");
  EXPECT_EQ(printed(AnyConstReference(other.extra)), R"({"en": "Arm"})");
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
  EXPECT_EQ(whyNot<int>(AnyValue()), "cannot convert nothing to int32: there is no value");
  EXPECT_EQ(whyNot<std::list<int>>(AnyValue(std::list<AnyValue>(1))),
            "cannot convert list<dynamic> to list<int32>: [0]: there is no value");
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
  EXPECT_EQ(AnyValue(deepest).size(), 1U);
  const AnyValue deeper = nested(128, inList);
  EXPECT_THROW(AnyValue{deeper}, ConversionError);
  const AnyValue deep = nested(200000, inList);
  AnyValue kept("kept");
  EXPECT_THROW(kept = deep, ConversionError);
  EXPECT_EQ(kept.as<std::string>(), "kept");
  EXPECT_EQ(nested(200000, inValue).to<std::string>(), "innermost");
  EXPECT_EQ(whyNot<std::list<AnyValue>>(deep),
            "cannot convert list<dynamic> to list<dynamic>: [0]: cannot copy values nested more "
            "than 128 deep");
  EXPECT_EQ(nested(63, inList), nested(63, inList)); // a list and an AnyValue each
  EXPECT_THROW(static_cast<void>(deep == deep), ConversionError);
  EXPECT_THAT(printed(deep), testing::HasSubstr("[...]"));
  const AnyValue leaf(Tree{});
  EXPECT_EQ(inTree(inTree(leaf)).to<Tree>().branches.at(0).branches.size(), 1U);
  AnyValue tree(leaf);
  for (int i = 0; i < 200000; ++i)
  {
    tree = inTree(std::move(tree));
  }
  EXPECT_THROW(tree.to<Tree>(), ConversionError);
}
