// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <vesk/anyvalue.hpp>
#include <vesk/runtimetypes.hpp>

#include <cmath>
#include <limits>

using namespace vesk;

namespace
{
struct Point
{
  double x = 1;
  int y = 2;
};
struct Undescribed
{
  explicit Undescribed(int number) : value(number) {}
  int value;
};
} // namespace

template <>
struct vesk::StructDescription<Point>
{
  static constexpr auto name = "Point";
  static constexpr auto members =
      std::make_tuple(vesk::member("y", &Point::y), vesk::member("x", &Point::x));
};

TEST(TypeSystem, TellsKindAndNameOfEachType)
{
  using Pair = std::pair<std::vector<Point>, bool>;
  const std::vector<std::tuple<TypeInterface*, TypeKind, std::string>> types{
      {typeOf<bool>(), TypeKind::Bool, "bool"},
      {typeOf<signed char>(), TypeKind::Integer, "int8"},
      {typeOf<unsigned long>(), TypeKind::Integer, "uint64"},
      {typeOf<float>(), TypeKind::Float, "float32"},
      {typeOf<std::string>(), TypeKind::String, "string"},
      {typeOf<std::list<Point>>(), TypeKind::List, "list<Point>"},
      {typeOf<std::map<int, std::vector<AnyValue>>>(), TypeKind::Map, "map<int32, list<dynamic>>"},
      {typeOf<Point>(), TypeKind::Struct, "Point"},
      {typeOf<Pair>(), TypeKind::Struct, "pair<list<Point>, bool>"},
      {typeOf<AnyValue>(), TypeKind::Dynamic, "dynamic"},
      {typeOf<std::vector<bool>>(), TypeKind::Unknown, "std::vector<bool, std::allocator<bool> >"},
      {typeOf<std::vector<Undescribed>>(), TypeKind::Unknown, {}},
      {typeOf<Undescribed>(), TypeKind::Unknown, "(anonymous namespace)::Undescribed"}};
  for (const auto& [type, kind, name] : types)
  {
    EXPECT_EQ(type->kind(), kind) << type->name();
    EXPECT_TRUE(name.empty() || type->name() == name) << type->name();
    EXPECT_EQ(getType(type->info()), type);
  }
  EXPECT_EQ(getType(typeid(short*)), nullptr);
  const AnyValue held(Undescribed(7));
  EXPECT_EQ(AnyValue(held).as<Undescribed>().value, 7);
  EXPECT_EQ(held.to<Undescribed>().value, 7);
  AnyValue changed(Undescribed(1));
  changed.set(AnyValue(std::vector<AnyValue>{held}).element(0));
  EXPECT_EQ(changed.as<Undescribed>().value, 7);
  const std::string why = "cannot convert int32 to " + typeOf<Undescribed>()->name() +
                          ": int32 is no " + typeOf<Undescribed>()->name();
  EXPECT_EQ(thrown<ConversionError>([] { AnyValue(5).to<Undescribed>(); }), why);
  EXPECT_EQ(thrown<ConversionError>([&changed] { changed.set(5); }), why);
  EXPECT_THROW(AnyValue(*typeOf<Undescribed>()), std::logic_error);
  const std::pair<const std::string, int> entry("key", 1);
  EXPECT_EQ(AnyValue(entry).type()->kind(), TypeKind::Unknown);
}

TEST(TypeSystem, ReachesMembersByIndex)
{
  const auto& type = static_cast<const StructTypeInterface&>(*typeOf<Point>());
  Point point;
  EXPECT_THAT(type.memberNames(), testing::ElementsAre("y", "x"));
  EXPECT_EQ(type.memberTypes().at(1), typeOf<double>());
  EXPECT_EQ(type.memberIndex("x"), 1U);
  EXPECT_EQ(type.memberIndex("z"), std::nullopt);
  EXPECT_EQ(type.member(&point, 0), &point.y);
  const double number = 2.5;
  type.setMember(&point, 1, &number);
  EXPECT_EQ(point.x, 2.5);
  EXPECT_THROW(type.member(&point, 2), std::out_of_range);
  EXPECT_THROW(type.setMember(&point, 2, &number), std::out_of_range);
}

TEST(TypeSystem, RegistersEachNameAndEachTypeOnce)
{
  auto* const runtime = describeStruct("registered::Runtime", {{"a", typeOf<int>()}});
  EXPECT_TRUE(registerStruct(runtime));
  EXPECT_EQ(getStruct("registered::Runtime"), runtime);
  EXPECT_FALSE(registerStruct(describeStruct("registered::Runtime", {})));
  EXPECT_EQ(getStruct("registered::Runtime"), runtime);
  EXPECT_EQ(getStruct("Point"), nullptr); // described on first use, not registered
  TypeInterface* const point = typeOf<Point>();
  EXPECT_FALSE(registerType(typeid(Point), runtime));
  EXPECT_EQ(typeOf<Point>(), point);
  EXPECT_FALSE(registerType(typeid(Undescribed*), point) || registerType(typeid(void), runtime));
  EXPECT_FALSE(registerStruct(nullptr) || registerType(typeid(Undescribed*), nullptr));
  EXPECT_EQ(registeredNames().back(), "registered::Runtime");
}

// The statics of the type system are created after this object, and so would be destroyed before
// it.
TEST(TypeSystem, LastsToTheEndOfTheProgram)
{
  struct UsedAtTheEnd
  {
    AnyValue value;
    ~UsedAtTheEnd() { value.member("y").set(3); }
  };
  static UsedAtTheEnd used;
  used.value = AnyValue(Point());
  EXPECT_EQ(used.value.member("y").as<int>(), 2);
}

TEST(TypeSystem, DescribesStructsAtRunTime)
{
  auto* const number = typeOf<int>();
  auto* const inner = describeStruct("Inner", {{"a", number}, {"b", typeOf<std::string>()}});
  EXPECT_EQ(describeStruct("Inner", {{"a", number}, {"b", typeOf<std::string>()}}), inner);
  EXPECT_NE(describeStruct("Inner", {{"b", number}, {"a", typeOf<std::string>()}}), inner);
  EXPECT_THROW(describeStruct("S", {{"a", number}, {"a", number}}), std::invalid_argument);
  EXPECT_THROW(describeStruct("S", {{"a", nullptr}}), std::invalid_argument);
  EXPECT_THROW(describeList(nullptr), std::invalid_argument);
  EXPECT_THROW(describeMap(number, nullptr), std::invalid_argument);
  EXPECT_THROW(describeMap(nullptr, number), std::invalid_argument);
  EXPECT_THROW(describeMap(inner, number), std::invalid_argument);
  EXPECT_EQ(describeList(AnyValue(*inner).type()), describeList(inner));
  EXPECT_EQ(describeMap(number, inner), describeMap(number, inner));
  EXPECT_NE(describeMap(number, inner), describeMap(number, number));

  AnyValue value(*describeStruct("Outer", {{"inner", inner}, {"list", describeList(inner)}}));
  value.member("inner").member("a").set(5);
  value.member("list").set(std::vector<AnyValue>(2, AnyValue(value.member("inner"))));
  const AnyValue copy(value);
  value.member("list").element(1).member("b").set("changed");
  EXPECT_EQ(value.member("list").element(1).member("b").as<std::string>(), "changed");
  EXPECT_EQ(copy.member("list").element(1).member("b").as<std::string>(), "");
  EXPECT_EQ(copy.member(1).element(0).member(0).as<int>(), 5);
  using Inners = std::vector<std::map<std::string, AnyValue>>;
  EXPECT_EQ(value.member("list").to<Inners>().at(1).at("b").as<std::string>(), "changed");
  // All values described at run time are stored alike, and yet are of different types.
  EXPECT_THROW(AnyValue(*inner).set(value), ConversionError);
}

TEST(TypeSystem, RefusesToDescribeWhatUsesUpStackOrMemory)
{
  const auto depthOf = [](const TypeInterface* type, const auto& around)
  {
    const auto describe = [&] { type = around(type); };
    int depth = 0;
    while (depth < 1000 && thrown<std::invalid_argument>(describe).empty())
    {
      ++depth;
    }
    EXPECT_EQ(AnyValue(*type).type(), type);
    return depth;
  };
  EXPECT_EQ(depthOf(typeOf<int>(), describeList), 127);
  const auto inMap = [](const TypeInterface* type) { return describeMap(typeOf<int>(), type); };
  EXPECT_EQ(depthOf(typeOf<int>(), inMap), 127);
  const auto inTwo = [](const TypeInterface* type) {
    return describeStruct("Two", {{"a", type}, {"b", type}});
  };
  EXPECT_EQ(depthOf(typeOf<int>(), inTwo), 15); // 2^15 values, and the structs around them
}

TEST(TypeSystem, FillsOnlyAddedFields)
{
  Point point{5, 6};
  const auto& type = static_cast<const StructTypeInterface&>(*typeOf<Point>());
  EXPECT_FALSE(fillMissingFieldsWithDefaultValues(type, &point, {"x", "y"}, {"x"}));
  EXPECT_FALSE(fillMissingFieldsWithDefaultValues(type, &point, {"x", "z"}, {"x", "z"}));
  EXPECT_EQ(point.x, 5);
  EXPECT_TRUE(fillMissingFieldsWithDefaultValues(type, &point, {"x"}, {"y", "x"}));
  EXPECT_EQ(point.x, 0); // the default of the member's type
  EXPECT_EQ(point.y, 6);
  EXPECT_TRUE(fillMissingFieldsWithDefaultValues(type, &point, {"y"}, {"y"}));
  EXPECT_EQ(point.y, 0);
}

template <typename Target, typename Source>
bool fits(Source number)
{
  try
  {
    const auto converted = AnyValue(number).template to<Target>();
    EXPECT_TRUE(std::is_floating_point_v<Target> || static_cast<Source>(converted) == number);
    return true;
  }
  catch (const ConversionError&)
  {
    return false;
  }
}

TEST(TypeSystem, ConvertsNumbersThatFit)
{
  constexpr auto maximum = std::numeric_limits<std::int64_t>::max();
  constexpr auto minimum = std::numeric_limits<std::int64_t>::min();
  constexpr auto highest = std::numeric_limits<std::uint64_t>::max();
  EXPECT_TRUE((fits<signed char>(-128)) && (fits<signed char>(127)));
  EXPECT_FALSE((fits<signed char>(-129)) || (fits<signed char>(128)));
  EXPECT_TRUE((fits<unsigned char>(255)) && (fits<std::uint64_t>(maximum)));
  EXPECT_FALSE((fits<unsigned char>(256)) || (fits<std::uint64_t>(-1)));
  EXPECT_FALSE((fits<std::int64_t>(highest)) || (fits<int>(maximum)) || (fits<int>(highest)));
  EXPECT_TRUE((fits<std::int64_t>(static_cast<double>(minimum))) && (fits<int>(3.0)));
  EXPECT_FALSE((fits<std::int64_t>(static_cast<double>(maximum))) || (fits<int>(3.5)) ||
               (fits<std::uint64_t>(-1.0)) || (fits<std::uint64_t>(std::ldexp(1.0, 64))));
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_FALSE((fits<int>(infinite)) || (fits<int>(std::nan(""))) || (fits<float>(1e300)));
  EXPECT_TRUE((fits<float>(infinite)) && (fits<float>(0.1)) && (fits<float>(highest)));
  EXPECT_FALSE((fits<int>(true)) || (fits<bool>(1))); // a bool is no number
}
