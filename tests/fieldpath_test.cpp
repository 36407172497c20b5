// SPDX-License-Identifier: Apache-2.0
#include "filledpackage.hpp"
#include "support.hpp"

#include <edit/fieldvalue.hpp>
#include <edit/membername.hpp>
#include <package/interop/xovalue.hpp>

#include <QRegularExpression>
#include <nlohmann/json.hpp>

using namespace vesk;
using namespace vesk::edit;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Path = FieldPath;

namespace
{
void set(const AnyReference& root, const std::string& assignment)
{
  const auto [path, value] = parseAssignment(assignment);
  setAt(root, path, value);
}

/// Expects members to have the same friendly names as in the variant form, where they have any
/// there.
void expectVariantNames(const AnyConstReference& value, const XO::XOValue& variant)
{
  for (std::size_t i = 0; i < value.memberNames().size(); ++i)
  {
    const std::string& name = value.memberNames()[i];
    const XO::XOValue& pair = variant[static_cast<int>(i)];
    const std::string& variantName = pair[0];
    EXPECT_EQ(friendlyName(*value.type(), name), variantName.empty() ? name : variantName);
    const AnyConstReference member = value.member(i);
    if (member.type()->kind() == TypeKind::List && !member.element(0).is<std::string>())
    {
      expectVariantNames(member.element(0), pair[1][0]);
    }
  }
}

struct Measures
{
  std::int8_t count = 0;
  double weight = 0;
  std::map<int, std::string> texts;
  AnyValue held{
      std::map<std::string, AnyValue>{{"inner", AnyValue(std::string("x"))}, {"none", AnyValue()}}};
  std::vector<AnyValue> values;
};
} // namespace

template <>
struct vesk::StructDescription<Measures>
{
  static constexpr auto name = "::Measures";
  static constexpr auto members =
      std::make_tuple(member("count", &Measures::count), member("weight", &Measures::weight),
                      member("texts", &Measures::texts), member("held", &Measures::held),
                      member("values", &Measures::values));
};

TEST(FieldPath, IsWrittenAndReadAsText)
{
  const std::size_t zero = 0;
  for (const auto& [text, path] : std::vector<std::pair<std::string, Path>>{
           {"version", Path{"version"}},
           {"behaviors[0].langToTags.en_US[12]",
            Path{"behaviors", zero, "langToTags", "en_US", std::size_t(12)}},
           {"[0][1]", Path{zero, std::size_t(1)}},
           {R"(names."")", Path{"names", ""}},
           {R"(*."[*]"[*][*].x)", Path{"*", "[*]", EveryElement(), EveryElement(), "x"}},
           {R"("a.b"."x[0]=\"y\\ \n"[0].über)", Path{"a.b", "x[0]=\"y\\ \n", zero, "über"}}})
  {
    EXPECT_EQ(parseFieldPath(text), path);
    EXPECT_EQ(toText(path), text);
  }
  EXPECT_EQ(parseFieldPath("\"names\".\"\\u0065n\""), (Path{"names", "en"}));
  EXPECT_THAT(parseAssignment(R"(names."="=a=b)"), Pair(Path{"names", "="}, "a=b"));
  EXPECT_THAT(parseAssignment("[0]="), Pair(Path{zero}, ""));
}

TEST(FieldPath, CallsMembersAsTheVariantFormDoes)
{
  auto package = filled<PackageInfo>();
  XO::XOValue variant;
  package.toXOValue(variant);
  expectVariantNames(AnyConstReference(package), variant);
}

TEST(FieldValue, IsSetInEveryMemberOfEveryRecord)
{
  const auto package = filled<PackageInfo>();
  const auto wholes = nlohmann::json::parse(contentIn(package));
  // First sets whole fields, then each text alone, which creates the values around it.
  for (const nlohmann::json& parts : {wholes, wholes.flatten()})
  {
    PackageInfo grown;
    for (const auto& [place, value] : parts.items())
    {
      QString path = QString::fromStdString(place);
      path.replace(QRegularExpression("/(\\d+)"), "[\\1]").replace('/', '.');
      setAt(AnyReference(grown),
            parseFieldPath(path.mid(path.startsWith('.') ? 1 : 0).toStdString()),
            value.is_string() ? value.get<std::string>() : value.dump());
    }
    EXPECT_EQ(contentIn(grown), contentIn(package));
  }
}

TEST(FieldValue, MayBeOfAnyType)
{
  Measures measures;
  const AnyReference root(measures);
  for (const char* assignment : {"count=-12", "weight=2.5", "texts.12=a", "texts.-3=b",
                                 "held.inner=y", R"(texts={"7": "c", "8": "d"})", "texts.8=e"})
  {
    set(root, assignment);
  }
  const std::string all = R"({"count":-12,"weight":2.5,"texts":[[7,"c"],[8,"e"]],)"
                          R"("held":{"inner":"y","none":null},"values":[]})";
  EXPECT_EQ(toJson(root, -1), all);
  EXPECT_EQ(valueAt(root, parseFieldPath("texts.7")).as<std::string>(), "c");
  EXPECT_EQ(valueAt(root, parseFieldPath("held.inner")).to<std::string>(), "y");
  const auto expand = [&](const std::string& path) { return expanded(root, parseFieldPath(path)); };
  EXPECT_THAT(expand("texts[*]"), ElementsAre(Path{"texts", "7"}, Path{"texts", "8"}));
  EXPECT_THAT(expand("values[*].x"), IsEmpty());
  EXPECT_THAT(expand("held[*].x"),
              ElementsAre(Path{"held", "inner", "x"}, Path{"held", "none", "x"}));
  EXPECT_THAT(expand("no.every"), ElementsAre(Path{"no", "every"}));
  for (const auto& [assignment, message] : std::vector<std::pair<std::string, std::string>>{
           {"count=300", "count: takes a number of type int8, not 300"},
           {"count=1.5", "count: takes a number of type int8, not 1.5"},
           {"count=", R"(count: takes a number of type int8, not "")"},
           {"weight.x=1", "weight.x: weight is a number and has no members"},
           {"weight=1e999", R"(weight: takes a number of type float64, not "1e999")"},
           {"texts[*]=a", "texts[*]: texts[*] stands for any number, but only one is taken here"},
           {"texts.x=a", R"(texts.x: takes a number of type int32, not "x")"},
           {"held.none=1", "held.none: is empty and takes no value"},
           {"held.none.x=1", "held.none.x: held.none is empty and has no members"},
           {"held.new=1", "held.new: is empty and takes no value"},
           {"values=[1]", "values[0]: takes no value, not 1"}})
  {
    EXPECT_EQ(thrown<FieldError>([&, &toSet = assignment] { set(root, toSet); }), message);
    EXPECT_EQ(toJson(root, -1), all);
  }
  const auto unset = [&](const std::string& path) { return unsetAt(root, parseFieldPath(path)); };
  EXPECT_EQ(thrown<FieldError>([&] { unset("count[*]"); }),
            "count[*]: count is a number and has no elements");
  EXPECT_FALSE(unset("held.new[*]"));
  EXPECT_TRUE(unset("values[*]") && unset("texts[*]") && unset("held[*]"));
  EXPECT_EQ(toJson(root, -1), R"({"count":-12,"weight":2.5,"texts":[],"held":{},"values":[]})");
}
