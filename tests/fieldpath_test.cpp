// SPDX-License-Identifier: Apache-2.0
#include "filledpackage.hpp"

#include <package/interop/xovalue.hpp>

#include <gmock/gmock.h>

#include <tools/veskpackage/fieldvalue.hpp>
#include <tools/veskpackage/membername.hpp>

using namespace vesk;
using testing::HasSubstr;
using testing::Pair;
using testing::StartsWith;

namespace
{
using Table = std::vector<std::pair<std::string, std::string>>;

/// The message of the FieldError that an action throws; empty when it throws none.
template <typename Action>
std::string failure(const Action& action)
{
  try
  {
    action();
    return {};
  }
  catch (const FieldError& error)
  {
    return error.what();
  }
}

void set(const AnyReference& root, const std::string& assignment)
{
  const auto [path, value] = parseAssignment(assignment);
  setAt(root, path, value);
}

PackageInfo museumGuide()
{
  PackageInfo package;
  for (const char* assignment :
       {"version=1.2", R"(names={"de": "Führer", "en_US": "Guide", "a.b": "dotted", "": "none"})",
        R"(supportedLanguages=["en_US", "de"])",
        R"(behaviors=[{"path": "hall", "tags": {"en_US": ["a", "b"]}}, {"userRequestable": true}])",
        R"(services=[{"name": "x", "execStart": "y --z=1", "autoRun": true}, {"name": "w"}])"})
  {
    set(AnyReference(package), assignment);
  }
  return package;
}

/// Calls \p action with every part of a value and the path to it, wholes before their parts.
template <typename Action>
void forEachPart(const AnyConstReference& value, const FieldPath& path, const Action& action)
{
  action(path, value);
  const auto goOn = [&](const FieldStep& step, const AnyConstReference& part)
  {
    FieldPath partPath = path;
    partPath.push_back(step);
    forEachPart(part, partPath, action);
  };
  if (value.type()->kind() == TypeKind::List)
  {
    for (std::size_t i = 0; i < value.size(); ++i)
    {
      goOn(i, value.element(i));
    }
  }
  else if (value.type()->kind() == TypeKind::Map)
  {
    for (const auto& [key, item] : value.entries())
    {
      goOn(keyName(key), item);
    }
  }
  else if (value.type()->kind() == TypeKind::Struct)
  {
    for (const std::string& name : value.memberNames())
    {
      goOn(friendlyName(name), value.member(name));
    }
  }
}

/// What sets a value to this one.
std::string textOf(const AnyConstReference& value)
{
  return value.is<std::string>() ? value.as<std::string>() : toJson(value, -1);
}

/// That members go by the names that they have in the variant form, where they have names there.
void expectVariantNames(const AnyConstReference& value, const XO::XOValue& variant)
{
  for (std::size_t i = 0; i < value.memberNames().size(); ++i)
  {
    const std::string& name = value.memberNames()[i];
    const XO::XOValue& pair = variant[static_cast<int>(i)];
    const std::string& variantName = pair[0];
    EXPECT_EQ(friendlyName(name), variantName.empty() ? name : variantName);
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
  using Path = FieldPath;
  const std::size_t zero = 0;
  for (const auto& [text, path] : std::vector<std::pair<std::string, Path>>{
           {"version", Path{"version"}},
           {"behaviors[0].langToTags.en_US[12]",
            Path{"behaviors", zero, "langToTags", "en_US", std::size_t(12)}},
           {"[0][1]", Path{zero, std::size_t(1)}},
           {R"(names."")", Path{"names", ""}},
           {R"("a.b"."x[0]=\"y\\ \n"[0].über)", Path{"a.b", "x[0]=\"y\\ \n", zero, "über"}}})
  {
    EXPECT_EQ(parseFieldPath(text), path);
    EXPECT_EQ(toText(path), text);
  }
  EXPECT_EQ(parseFieldPath("\"names\".\"\\u0065n\""), (Path{"names", "en"}));
  EXPECT_THAT(parseAssignment(R"(names."="=a=b)"), Pair(Path{"names", "="}, "a=b"));
  EXPECT_THAT(parseAssignment("[0]="), Pair(Path{zero}, ""));
}

TEST(FieldPath, SaysWhereItIsMalformed)
{
  for (const auto& [text, message] :
       Table{{"", "at character 1: expected a name"},
             {"a..b", "at character 3: expected a name"},
             {"a.", "at character 3: expected a name"},
             {"a b", R"(at character 2: expected "." or "[")"},
             {"a[0]b", R"(at character 5: expected "." or "[")"},
             {"über[x]", "at character 6: expected an index"},
             {"a[99999999999999999999]", "at character 3: expected an index"},
             {"a[0", R"(at character 4: expected "]")"},
             {R"(a."b\")", "at character 3: the quotes are not closed"},
             {R"(a."\x")", "at character 3: what is quoted is no JSON string"},
             {"a=b", "at character 2: expected the end"}})
  {
    EXPECT_THAT(failure([&, &path = text] { parseFieldPath(path); }),
                StartsWith(std::string(text).append(": ").append(message)));
  }
  EXPECT_EQ(failure([] { parseAssignment("a.b"); }),
            R"(a.b: at character 4: expected "=" and a value)");
}

TEST(FieldPath, CallsMembersAsTheVariantFormDoes)
{
  auto package = filled<PackageInfo>();
  XO::XOValue variant;
  package.toXOValue(variant);
  expectVariantNames(AnyConstReference(package), variant);
}

TEST(FieldValue, IsReadByItsPath)
{
  const PackageInfo package = museumGuide();
  for (const auto& [path, json] :
       Table{{"version", R"("1.2")"},
             {"names.de", R"("Führer")"},
             {"langToName.\"a.b\"", R"("dotted")"},
             {"behaviors[0].tags.en_US[1]", R"("b")"},
             {"behaviors[0].langToTags", R"({"en_US":["a","b"]})"},
             {"behaviors[1].userRequestable", "true"},
             {"services[0]", R"({"execStart":"y --z=1","name":"x","autoRun":true})"},
             {"services[1]", R"({"execStart":"","name":"w","autoRun":false})"}})
  {
    EXPECT_EQ(toJson(valueAt(AnyConstReference(package), parseFieldPath(path)), -1), json) << path;
  }
}

TEST(FieldValue, IsSetInEveryMemberOfEveryRecord)
{
  const auto package = filled<PackageInfo>();
  PackageInfo other;
  DistinctValues values(1000);
  fill(AnyReference(other), values);
  const std::string otherContent = contentIn(other);
  PackageInfo grown; // from its texts alone; what is around them is made on the way
  forEachPart(AnyConstReference(package), {},
              [&](const FieldPath& path, const AnyConstReference& value)
              {
                if (value.is<std::string>() || value.is<bool>())
                {
                  setAt(AnyReference(grown), path, textOf(value));
                }
                const AnyReference target(other);
                const std::string otherText = textOf(valueAt(target, path));
                setAt(target, path, textOf(value));
                EXPECT_EQ(textOf(valueAt(target, path)), textOf(value)) << toText(path);
                setAt(target, path, otherText);
                EXPECT_EQ(contentIn(other), otherContent) << toText(path);
              });
  EXPECT_EQ(contentIn(grown), contentIn(package));
}

TEST(FieldValue, IsSetAsAWholeOrNotAtAll)
{
  PackageInfo package = museumGuide();
  const AnyReference root(package);
  set(root, R"(version="1")");
  EXPECT_EQ(package.version(), R"("1")"); // a text is taken as it is
  set(root, "supportedLanguages[2]=fr");
  set(root, R"(behaviors[2].tags.de=["x"])");
  set(root, R"(behaviors[0]={"langToName": {"de": "a"}, "names": {"en": "b"}})");
  EXPECT_EQ(toJson(valueAt(root, {"supportedLanguages"}), -1), R"(["en_US","de","fr"])");
  EXPECT_EQ(package.behaviors().back().tags("de"), std::list<std::string>{"x"});
  EXPECT_EQ(package.behaviors().front().path(), ""); // what is left out is not kept
  EXPECT_EQ(toJson(valueAt(root, {"behaviors", std::size_t(), "names"}), -1), R"({"en":"b"})");

  const std::string content = contentIn(package);
  for (const auto& [assignment, message] : Table{
           {"supportedLanguages[4]=x",
            "supportedLanguages[4]: there is no supportedLanguages[4]: the list has 3 elements"},
           {"services[0].autoRun=1", "services[0].autoRun: takes true or false, not 1"},
           {"services[0].autoRun=yes", R"(services[0].autoRun: takes true or false, not "yes")"},
           {"behaviors[3].userRequestable=",
            R"(behaviors[3].userRequestable: takes true or false, not "")"},
           {"behaviors[3].tags.de[1]=x", "behaviors[3].tags.de[1]: there is no behaviors[3].tags.de"
                                         "[1]: the list has 0 elements"},
           {"behaviors[3].mood=x", R"(behaviors[3].mood: behaviors[3] has no member "mood")"},
           {"names.fr.x=y", "names.fr.x: names.fr is a text and has no members"},
           {"names=x", "names: takes a JSON object: parse error at line 1, column 1"},
           {"names=[]", "names: takes a JSON object, not an array"},
           {R"(names={"en": {}})", "names.en: takes a JSON string, not an object"},
           {R"(supportedLanguages=["x", 1])", "supportedLanguages[1]: takes a JSON string, not 1"},
           {R"(services=[{"name": "n"}, {"autorun": true}])",
            R"(services[1].autorun: services[1] has no member "autorun"; it has execStart, name, )"
            "autoRun (did you mean autoRun?)"}})
  {
    EXPECT_THAT(failure([&, &toSet = assignment] { set(root, toSet); }), StartsWith(message));
    EXPECT_EQ(contentIn(package), content) << assignment;
  }
}

TEST(FieldValue, WrongPathsSayWhatIsThereInstead)
{
  const PackageInfo package = museumGuide();
  for (const auto& [path, message] :
       Table{{"behaviors[3].path", "there is no behaviors[3]: the list has 2 elements"},
             {"names.xx", R"(names has no entry "xx"; it has "", "a.b", de, en_US)"},
             {"names.en-US", "(did you mean en_US?)"},
             {"behaviors[0].names.de", R"(behaviors[0].names has no entry "de"; it is empty)"},
             {"version.major", "version is a text and has no members"},
             {"services[1].autoRun[0]", "services[1].autoRun is a bool and has no elements"},
             {"names[0]", "names is a map and has no elements"},
             {"[0]", "the package is a struct and has no elements"},
             {"behaviors.path",
              "behaviors is a list and has no members, but elements, as in behaviors[0]"}})
  {
    EXPECT_THAT(
        failure([&, &wrong = path] { valueAt(AnyConstReference(package), parseFieldPath(wrong)); }),
        testing::AllOf(StartsWith(path + ": "), HasSubstr(message)));
  }
  for (const auto& [name, meant] : Table{{"servces", " (did you mean services?)"},
                                         {"langauges", " (did you mean languages?)"},
                                         {"executablefiles", " (did you mean executableFiles?)"},
                                         {"version2.0", ""},
                                         {"", ""}})
  {
    EXPECT_THAT(failure([&, &wrong = name] { valueAt(AnyConstReference(package), {wrong}); }),
                testing::AllOf(HasSubstr(" has no member \"" + name + "\"; it has uuid, path, "),
                               testing::EndsWith(", descriptionLanguages" + meant)));
  }
  const std::vector<std::string> many(100, "ab");
  EXPECT_THAT(choiceInsteadOf("x", many), testing::EndsWith(", ab, ab and 70 more"));
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
  EXPECT_EQ(toJson(root, -1), R"({"count":-12,"weight":2.5,"texts":[[7,"c"],[8,"e"]],)"
                              R"("held":{"inner":"y","none":null},"values":[]})");
  EXPECT_EQ(valueAt(root, parseFieldPath("texts.7")).as<std::string>(), "c");
  EXPECT_EQ(valueAt(root, parseFieldPath("held.inner")).to<std::string>(), "y");
  for (const auto& [assignment, message] :
       Table{{"count=300", "count: takes a number of type int8, not 300"},
             {"count=1.5", "count: takes a number of type int8, not 1.5"},
             {"count=", R"(count: takes a number of type int8, not "")"},
             {"weight=1e999", R"(weight: takes a number of type float64, not "1e999")"},
             {"texts.x=a", R"(texts.x: takes a number of type int32, not "x")"},
             {"held.none=1", "held.none: is empty and takes no value"},
             {"held.none.x=1", "held.none.x: held.none is empty and has no members"},
             {"values=[1]", "values[0]: takes no value, not 1"}})
  {
    EXPECT_EQ(failure([&, &toSet = assignment] { set(root, toSet); }), message);
  }
}
