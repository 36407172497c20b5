// SPDX-License-Identifier: Apache-2.0
// The description of the format beside what readers, writer, schemas and checker make of a manifest.
#include "support.hpp"

#include <check/manifestcheck.hpp>
#include <format/format.hpp>
#include <format/nearest.hpp>
#include <package/manifest2/loadmanifest.hpp>
#include <package/packageinfo.hpp>
#include <vesk/anyvalue.hpp>

#include <QXmlStreamReader>

#include <map>
#include <set>

using namespace vesk::format;
using testing::IsEmpty;
using vesk::AnyConstReference;

namespace
{
using Texts = std::set<std::string>;
using TextsByField = std::map<std::string, Texts>;

std::string nameOf(const Field& field) { return field.record + ' ' + field.registered; }

/// Checks the description of an element and of those below.
void expectDescribed(const Element& element, const std::string& path)
{
  const auto check = [](const Entry& entry, const std::string& place)
  {
    EXPECT_THAT(entry.meaning, testing::EndsWith(".")) << place;
    EXPECT_THAT(entry.absent, testing::Not(IsEmpty())) << place;
  };
  check(element, path);
  EXPECT_EQ(element.example.empty(), element.holds != Holds::Text) << path;
  EXPECT_EQ(find(path), &element);
  EXPECT_THAT(exampleOf(element), testing::AllOf(testing::StartsWith("<"), testing::EndsWith(">")));
  EXPECT_TRUE(!element.isCdata || exampleOf(element).find("<![CDATA[") != std::string::npos);
  for (const Attribute& attribute : element.attributes)
  {
    check(attribute, path + "/@" + attribute.name);
    EXPECT_FALSE(attribute.example.empty()) << path << attribute.name;
    EXPECT_EQ(attribute.field.name.empty(), attribute.role != Role::Own) << path;
  }
  for (const Element& child : element.children)
  {
    expectDescribed(child, path + '/' + child.name);
    const std::vector<const Element*> homes = homesOf(child.name);
    EXPECT_EQ(std::count_if(homes.begin(), homes.end(),
                            [&](auto home) { return home->name == element.name; }),
              1)
        << path;
  }
}

/// Gives every attribute and text a unique value, except that flags stay as they are, and puts two
/// more of its kind behind every child. Of these three the first two have the same key.
void fillThrice(Element& element, const std::string& key, int& count)
{
  const auto unique = [&count] { return "text " + std::to_string(++count); };
  for (Attribute& attribute : element.attributes)
  {
    if (attribute.type != Type::Flag)
    {
      attribute.example = attribute.role == Role::Key ? key : unique();
    }
  }
  element.example = element.holds == Holds::Text ? unique() : "";
  std::vector<Element> children;
  const std::string firstKey = unique();
  for (const Element& child : element.children)
  {
    for (const std::string& keyOfChild : {firstKey, firstKey, unique()})
    {
      fillThrice(children.emplace_back(child), keyOfChild, count);
    }
  }
  element.children = std::move(children);
}

/// Adds to the fields what a reader finds in an element that fillThrice() has filled. Keys and values
/// of a list or map belong to the field of that list or map. Of three children of a kind, the first
/// ones may be replaced.
void expectTexts(const Element& element, const std::string& fieldAround, Readers reader,
                 TextsByField& expected)
{
  const std::string field = element.field.name.empty() ? fieldAround : nameOf(element.field);
  const auto isRead = [reader](const Entry& entry)
  { return entry.readers == Readers::Both || entry.readers == reader; };
  std::map<Several, std::size_t> replaced{
      {Several::CountForOneReader, reader == Readers::LoadManifest ? 2 : 0},
      {Several::LastCounts, 2},
      {Several::LastOfKeyCounts, 1}};
  for (const Attribute& attribute : element.attributes)
  {
    if (isRead(attribute))
    {
      expected[attribute.role == Role::Own ? nameOf(attribute.field) : field].insert(
          attribute.example);
    }
  }
  if (element.holds == Holds::Text || element.holds == Holds::Presence)
  {
    expected[field].insert(element.holds == Holds::Text ? element.example : "true");
  }
  for (std::size_t i = 0; i < element.children.size(); ++i)
  {
    const Element& child = element.children[i];
    if (isRead(child) && i % 3 >= replaced[child.several])
    {
      expectTexts(child, element.holds == Holds::Entries ? field : "", reader, expected);
      if (element.holds == Holds::Names)
      {
        expected[field].insert(child.name);
      }
    }
  }
}

/// All texts and flags in a value, by the member of a record in which they are.
void collectTexts(const AnyConstReference& value, const std::string& field, TextsByField& found)
{
  switch (value.type()->kind())
  {
  case vesk::TypeKind::Struct:
    for (const std::string& name : value.memberNames())
    {
      found[value.type()->name() + ' ' + name]; // also when it holds nothing
      collectTexts(value.member(name), value.type()->name() + ' ' + name, found);
    }
    break;
  case vesk::TypeKind::List:
    for (const AnyConstReference& element : value.elements())
    {
      collectTexts(element, field, found);
    }
    break;
  case vesk::TypeKind::Map:
    for (const auto& [key, item] : value.entries())
    {
      collectTexts(key, field, found);
      collectTexts(item, field, found);
    }
    break;
  default:
    if (const std::string text = value.is<bool>() ? "true" : value.as<std::string>(); !text.empty())
    {
      found[field].insert(text);
    }
  }
}

/// The elements of a manifest, their attributes and their texts, as paths in the order in which they
/// stand.
std::vector<std::string> pathsIn(const std::string& manifest)
{
  std::vector<std::string> paths;
  std::vector<std::string> open{""};
  QXmlStreamReader xml(QString::fromStdString(manifest));
  while (!xml.atEnd())
  {
    xml.readNext();
    if (xml.isStartElement())
    {
      open.push_back(open.back() + '/' + xml.name().toString().toStdString());
      paths.push_back(open.back());
      std::set<std::string> attributes; // which are written in the order of their names
      for (const QXmlStreamAttribute& attribute : xml.attributes())
      {
        attributes.insert(open.back() + "/@" + attribute.name().toString().toStdString());
      }
      paths.insert(paths.end(), attributes.begin(), attributes.end());
    }
    if (xml.isCharacters() && !xml.isWhitespace())
    {
      paths.push_back(open.back() + "/text()");
    }
    if (xml.isEndElement())
    {
      open.pop_back();
    }
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  return paths;
}

/// A manifest that holds what a path leads to, and nothing else.
std::string manifestWith(const std::string& path)
{
  QString manifest;
  QXmlStreamWriter xml(&manifest);
  for (const QString& step : QString::fromStdString(path).split('/').mid(1))
  {
    if (step.startsWith('@'))
    {
      xml.writeAttribute(step.mid(1), "value");
    }
    else if (step == "text()")
    {
      xml.writeCharacters("text");
    }
    else
    {
      xml.writeStartElement(step);
    }
  }
  xml.writeEndDocument();
  return manifest.toStdString();
}

/// Adds the paths that are written at an element of the format and below for a package that was read
/// from a manifest of the paths \p given.
void expectWritten(const Element& element, const std::string& path, const Texts& given,
                   std::vector<std::string>& expected)
{
  const auto isGiven = [&](const std::string& part) { return given.count(path + part) > 0; };
  const Attribute* const key = attributeFor(element, Role::Key);
  const bool hasContent = std::any_of(given.begin(), given.end(),
                                      [&](const std::string& other)
                                      {
                                        return other.rfind(path + '/', 0) == 0 &&
                                               (key == nullptr || other != path + "/@" + key->name);
                                      });
  const bool isComplete =
      std::all_of(element.attributes.begin(), element.attributes.end(),
                  [&](const Attribute& attribute) { return isGiven("/@" + attribute.name); });
  const std::map<Written, bool> isWritten{{Written::Always, isGiven("") || !element.isRepeatable},
                                          {Written::UnlessEmpty, hasContent},
                                          {Written::UnlessIncomplete, isGiven("") && isComplete},
                                          {Written::IfTrue, isGiven("")},
                                          {Written::Never, false}};
  if (!isWritten.at(element.written))
  {
    return;
  }
  expected.push_back(path);
  Texts attributes; // which are written in the order of their names
  for (const Attribute& attribute : element.attributes)
  {
    const std::string part = "/@" + attribute.name;
    if (attribute.written == Written::Always ||
        (attribute.written == Written::UnlessEmpty && isGiven(part)))
    {
      attributes.insert(path + part);
    }
  }
  expected.insert(expected.end(), attributes.begin(), attributes.end());
  if (isGiven("/text()"))
  {
    expected.push_back(path + "/text()");
  }
  for (const Element& child : element.children)
  {
    expectWritten(child, path + '/' + child.name, given, expected);
  }
}

vesk::PackageInfo loaded(const std::string& manifest)
{
  vesk::PackageInfo package;
  EXPECT_TRUE(package.loadFromManifestContent(manifest)) << manifest;
  return package;
}
} // namespace

// What fails here is written anew by `cmake --build --preset release --target format_files`.
TEST(Format, IsWhatTheFilesMadeOfItSay)
{
  for (const char* const file : {"schema/manifest.rng", "schema/manifest.xsd", "docs/manifest.md",
                                 "docs/rules.md", "fuzz/manifest.dict"})
  {
    EXPECT_EQ(contentOf(std::string(PROJECT_FOLDER) + file), contentOf(std::string(MADE) + file));
  }
}

TEST(Format, SaysEverythingOfEveryElementAndAttribute)
{
  expectDescribed(package(), "/package");
  for (const char* const path : {"", "/", "package", "/package/", "/package/x", "/x"})
  {
    EXPECT_EQ(find(path), nullptr) << path;
  }
}

TEST(Format, NamesTheFieldInWhichEachTextIsFound)
{
  TextsByField withoutTexts{{"::vesk::BehaviorInfo categories", {}}, // which no manifest holds
                            {"::vesk::PackageInfo installer", {}},
                            {"::vesk::PackageInfo path", {}}};
  for (const Field& field : fields())
  {
    const auto [element, attribute] = placeOf(field.record, field.registered);
    const Field held = attribute != nullptr ? attribute->field
                       : element != nullptr ? element->field
                                            : Field();
    EXPECT_EQ(nameOf(held), nameOf(field));
    withoutTexts[nameOf(field)];
  }
  Element format = package();
  int count = 0;
  fillThrice(format, {}, count);
  const std::string manifest = exampleOf(format);
  const vesk::PackageInfo2 info = vesk::loadManifest(TemporaryFolder().file("m.xml", manifest));
  for (const Readers reader : {Readers::PackageInfo, Readers::LoadManifest})
  {
    const bool isSecond = reader == Readers::LoadManifest;
    TextsByField found;
    collectTexts(AnyConstReference(isSecond ? vesk::PackageInfo(info) : loaded(manifest)), {},
                 found);
    collectTexts(AnyConstReference(isSecond ? info.web() : vesk::WebInfo()), {}, found);
    found["::vesk::PackageInfo2 web"]; // a record, which has no text of its own
    TextsByField expected = withoutTexts;
    expectTexts(format, {}, reader, expected);
    EXPECT_EQ(found, expected);
  }
}

TEST(Format, IsWrittenInItsOrderAndWhenItSays)
{
  std::vector<std::string> manifests{exampleOf(package())};
  EXPECT_THAT(vesk::check::checkText(manifests.front()), IsEmpty());
  for (const std::string& path : pathsIn(manifests.front()))
  {
    manifests.push_back(manifestWith(path));
  }
  for (const std::string& manifest : manifests)
  {
    const std::vector<std::string> given = pathsIn(manifest);
    std::vector<std::string> expected;
    expectWritten(package(), "/package", {given.begin(), given.end()}, expected);
    EXPECT_EQ(pathsIn(loaded(manifest).saveToManifestContent()), expected) << manifest;
  }
}

TEST(Nearest, AreTheLeastMisspelt)
{
  const std::vector<std::string> names{"set", "get", "tags", "Tags", "version"};
  using Names = std::vector<std::string>;
  for (const auto& [misspelt, expected] :
       std::map<std::string, Names>{{"et", Names{"set", "get"}},
                                    {"TAGS", Names{"Tags"}},
                                    {"tgas", Names{"tags"}},
                                    {"VERSOIN", Names{"version"}},
                                    {"vrsoin", Names{"version"}},
                                    {"vsoin", Names{}},
                                    {"", Names{}}})
  {
    EXPECT_EQ(nearest(misspelt, names), expected) << misspelt;
  }
  EXPECT_THAT(nearest(std::string(65, 'x'), {std::string(64, 'x')}), IsEmpty());
}
