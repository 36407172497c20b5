// SPDX-License-Identifier: Apache-2.0
// The description of the format beside what readers, writer, schemas and checker make of a manifest.
#include "support.hpp"

#include <check/manifestcheck.hpp>
#include <format/format.hpp>
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

template <typename ElementOrConst, typename Visit>
void visitElements(ElementOrConst& element, const std::string& path, const Visit& visit)
{
  visit(element, path);
  for (auto& child : element.children)
  {
    visitElements(child, path + '/' + child.name, visit);
  }
}

std::string nameOf(const Field& field) { return field.record + ' ' + field.registered; }

/// Gives every attribute and text a unique value, and adds it to what is expected in its field;
/// keys and values of a list or map belong to the field of that list or map.
void numberExamples(Element& element, const std::string& fieldAround, TextsByField& expected,
                    int& count)
{
  const std::string field = element.field.name.empty() ? fieldAround : nameOf(element.field);
  const auto number = [&](Entry& entry, const std::string& heldBy)
  {
    if (entry.type != Type::Flag)
    {
      entry.example = "text " + std::to_string(++count);
    }
    expected[heldBy].insert(entry.example);
  };
  for (Attribute& attribute : element.attributes)
  {
    number(attribute, attribute.role == Role::Own ? nameOf(attribute.field) : field);
  }
  if (element.holds == Holds::Text)
  {
    number(element, field);
  }
  if (element.holds == Holds::Presence)
  {
    expected[field] = {"true"};
  }
  for (Element& child : element.children)
  {
    numberExamples(child, element.holds == Holds::Entries ? field : std::string(), expected, count);
    if (element.holds == Holds::Names)
    {
      expected[field].insert(child.name);
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

/// The elements of a manifest and their attributes, as paths in the order in which they stand.
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
    if (xml.isEndElement())
    {
      open.pop_back();
    }
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  return paths;
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
  for (const char* const file :
       {"schema/manifest.rng", "schema/manifest.xsd", "docs/manifest.md", "fuzz/manifest.dict"})
  {
    EXPECT_EQ(contentOf(std::string(PROJECT_FOLDER) + file), contentOf(std::string(MADE) + file));
  }
}

TEST(Format, SaysEverythingOfEveryElementAndAttribute)
{
  const auto check = [](const Entry& entry, const std::string& path)
  {
    EXPECT_THAT(entry.meaning, testing::EndsWith(".")) << path;
    EXPECT_THAT(entry.absent, testing::Not(IsEmpty())) << path;
  };
  visitElements(package(), "/package",
                [&](const Element& element, const std::string& path)
                {
                  check(element, path);
                  EXPECT_EQ(element.example.empty(), element.holds != Holds::Text) << path;
                  EXPECT_EQ(find(path), &element);
                  for (const Attribute& attribute : element.attributes)
                  {
                    check(attribute, path + "/@" + attribute.name);
                    EXPECT_FALSE(attribute.example.empty()) << path << attribute.name;
                    EXPECT_EQ(attribute.field.name.empty(), attribute.role != Role::Own) << path;
                  }
                });
  for (const char* const path : {"", "/", "package", "/package/", "/package/x", "/x"})
  {
    EXPECT_EQ(find(path), nullptr) << path;
  }
}

TEST(Format, NamesTheFieldInWhichEachTextIsFound)
{
  Element format = package();
  TextsByField expected;
  int count = 0;
  numberExamples(format, {}, expected, count);
  const std::string manifest = exampleOf(format);
  const vesk::PackageInfo package = loaded(manifest);
  TextsByField found;
  collectTexts(AnyConstReference(package), {}, found);

  Texts notInManifests;
  for (auto field = found.begin(); field != found.end();)
  {
    const std::size_t blank = field->first.find(' ');
    if (placeOf(field->first.substr(0, blank), field->first.substr(blank + 1)).element == nullptr)
    {
      notInManifests.insert(field->first);
    }
    const bool holdsRecords = field->second.empty(); // or is no part of a manifest
    field = holdsRecords ? found.erase(field) : std::next(field);
  }
  EXPECT_THAT(notInManifests,
              testing::ElementsAre("::vesk::BehaviorInfo categories",
                                   "::vesk::PackageInfo installer", "::vesk::PackageInfo path"));
  const Texts web = expected["::vesk::WebInfo path"];
  expected.erase("::vesk::WebInfo path");
  EXPECT_EQ(found, expected);
  for (const Field& field : fields())
  {
    const Place place = placeOf(field.record, field.registered);
    ASSERT_NE(place.element, nullptr) << nameOf(field);
    const Entry& holder =
        place.attribute != nullptr ? static_cast<const Entry&>(*place.attribute) : *place.element;
    EXPECT_EQ(nameOf(holder.field), nameOf(field));
  }

  const TemporaryFolder folder;
  const vesk::PackageInfo2 second = vesk::loadManifest(folder.file("m.xml", manifest));
  EXPECT_THAT(web, testing::ElementsAre(second.web().path));
  TextsByField foundBySecond;
  collectTexts(AnyConstReference(vesk::PackageInfo(second)), {}, foundBySecond);
  for (const auto& [field, texts] : expected)
  {
    const Place place =
        placeOf(field.substr(0, field.find(' ')), field.substr(field.find(' ') + 1));
    const bool isRead = place.element->readers != Readers::PackageInfo;
    EXPECT_EQ(foundBySecond[field], isRead ? texts : Texts()) << field;
  }
}

TEST(Format, IsWrittenInItsOrderAndWhenItSays)
{
  EXPECT_THAT(vesk::check::checkText(exampleOf(package())), IsEmpty());
  for (const bool areEmpty : {false, true})
  {
    Element format = package();
    visitElements(format, {},
                  [areEmpty](Element& element, const std::string&)
                  {
                    element.example = areEmpty ? "" : element.example;
                    for (Attribute& attribute : element.attributes)
                    {
                      attribute.example = areEmpty ? "" : attribute.example;
                    }
                  });
    const std::string manifest = exampleOf(format);
    std::vector<std::string> expected = pathsIn(manifest);
    const auto drop = [&expected](const std::string& path)
    {
      const auto isWithin = [&path](const std::string& other)
      { return other.compare(0, path.size(), path) == 0; };
      expected.erase(std::remove_if(expected.begin(), expected.end(), isWithin), expected.end());
    };
    const auto isWritten = [areEmpty](const Entry& entry)
    {
      return entry.written == Written::Always || entry.written == Written::IfTrue ||
             (entry.written != Written::Never && !areEmpty);
    };
    visitElements(format, "/package",
                  [&](const Element& element, const std::string& path)
                  {
                    const bool isGroup = !element.children.empty(); // which is never empty here
                    if (!isGroup && !isWritten(element))
                    {
                      drop(path);
                    }
                    for (const Attribute& attribute : element.attributes)
                    {
                      if (!isWritten(attribute))
                      {
                        drop(path + "/@" + attribute.name);
                      }
                    }
                  });
    EXPECT_EQ(pathsIn(loaded(manifest).saveToManifestContent()), expected);
  }
}
