// SPDX-License-Identifier: Apache-2.0
// Changes of manifests as edits of their text: every part of many manifests is changed, removed and
// added to alone, and one manifest is made another. changed() itself proves that what is read is what
// was wanted; here is proved that nothing else changes.
#include "support.hpp"

#include <edit/changes.hpp>
#include <edit/fieldvalue.hpp>
#include <package/manifest2/loadmanifest.hpp>
#include <source/edits.hpp>

#include <QRegularExpression>

#include <fuzz/manifestparts.hpp>
#include <set>

using namespace vesk::edit;
using vesk::AnyConstReference;
using vesk::AnyReference;
using vesk::TypeKind;
namespace source = vesk::source;

namespace
{
struct Text
{
  std::string name;
  std::string bytes;
};

std::vector<Text> textsIn(const std::vector<const char*>& folders)
{
  std::vector<Text> texts;
  for (const char* const folder : folders)
  {
    for (const QFileInfo& file : QDir(folder).entryInfoList({"*.xml"}, QDir::Files, QDir::Name))
    {
      texts.push_back({file.fileName().toStdString(), contentOf(file.filePath().toStdString())});
    }
  }
  return texts;
}

std::string replaced(const std::string& text, const QString& what, const QString& by)
{
  return QString::fromStdString(text).replace(QRegularExpression(what), by).toStdString();
}

/// A text in UTF-8 in other forms that mean the same.
std::vector<Text> formsOf(const Text& text)
{
  std::vector<Text> forms{{"tabs", replaced(text.bytes, "\n(  )+", "\n\t")},
                          {"one line", replaced(text.bytes, ">\\s+<", "><")},
                          {"CRLF", replaced(text.bytes, "\n", "\r\n")}};
  for (const source::Encoding& encoding :
       {source::Encoding{"UTF-8", true}, source::Encoding{"UTF-16LE", true},
        source::Encoding{"UTF-16BE", true}, source::Encoding{"ISO-8859-1", false}})
  {
    const std::string name = encoding.name.substr(0, encoding.name.find_last_of("LB"));
    forms.push_back({encoding.name,
                     source::encode((encoding.hasMark ? "\xEF\xBB\xBF" : "") +
                                        replaced(text.bytes, "encoding=.UTF-8.",
                                                 QString::fromStdString("encoding='" + name + "'")),
                                    encoding)});
  }
  return forms;
}

Manifest read(const std::string& bytes)
{
  vesk::LoadError error;
  return readManifest(bytes, error).value();
}

/// Changes a part in a way that suits it. False when it has none.
bool changePart(Manifest& manifest, const FieldPath& path)
{
  const AnyReference part = partAt(manifest, path);
  if (part.is<std::string>())
  {
    part.set("changed <&> \" ' \xC3\xA9");
    return true;
  }
  if (part.is<bool>())
  {
    part.set(!part.as<bool>());
    return true;
  }
  return false;
}

/// Adds a copy of the first element or entry to a list or map, in front of it.
bool addPart(Manifest& manifest, const FieldPath& path)
{
  const AnyReference part = partAt(manifest, path);
  const bool isMap = part.type()->kind() == TypeKind::Map;
  if ((!isMap && part.type()->kind() != TypeKind::List) || part.size() == 0)
  {
    return false;
  }
  vesk::AnyValue first(isMap ? part.entries().front().second : part.element(0));
  if (!isMap) // else one could not be told from the other
  {
    (first.is<std::string>() ? first.reference() : first.member(0)).set("added");
  }
  isMap ? part.insert("!", first) : part.insert(std::size_t{0}, first);
  return true;
}

/// Removes an element or entry.
bool removePart(Manifest& manifest, const FieldPath& path)
{
  const FieldPath whole(path.begin(), path.end() - 1);
  const AnyReference parent = whole.empty() ? AnyReference(manifest) : partAt(manifest, whole);
  if (parent.type()->kind() == TypeKind::List)
  {
    parent.erase(std::get<std::size_t>(path.back()));
    return true;
  }
  return parent.type()->kind() == TypeKind::Map && parent.erase(std::get<std::string>(path.back()));
}

using Change = bool (*)(Manifest&, const FieldPath&);

/// Makes a change of each part alone. \p check is given the text before and after it, and the part.
/// Says what is refused.
std::set<std::string>
changeEach(const Text& text, Change change, const std::string& what,
           const std::function<void(const Manifest& before, const Manifest& after,
                                    const std::string& bytes, const FieldPath&)>& check)
{
  const Manifest before = read(text.bytes);
  std::set<std::string> refused;
  for (const FieldPath& path : partsOf(before))
  {
    Manifest after = before;
    if (!change(after, path))
    {
      continue;
    }
    SCOPED_TRACE(text.name + ' ' + what + ' ' + toText(path));
    try
    {
      check(before, after, changed(text.bytes, before, after), path);
    }
    catch (const Refusal& refusal)
    {
      refused.insert(what + ' ' + toText(path) + ": " + refusal.what());
    }
  }
  return refused;
}

std::set<std::string> changeInAllWays(const Text& text)
{
  const auto goesBack = [&text](const Manifest& original, const Manifest& other,
                                const std::string& bytes, const FieldPath& path)
  {
    const AnyConstReference part = valueAt(AnyConstReference(original), path);
    const bool wasThere =
        part.is<std::string>() ? !part.as<std::string>().empty() : !part.is<bool>();
    EXPECT_NE(bytes, text.bytes);
    EXPECT_EQ(asidesIn(bytes), asidesIn(text.bytes));
    const std::string back = changed(bytes, other, original);
    const bool mayBeSpeltOtherwise =
        text.bytes.find('&') != std::string::npos || text.name == "repeated.xml";
    EXPECT_TRUE(!wasThere || back == text.bytes || mayBeSpeltOtherwise) << bytes << back;
  };
  std::set<std::string> refused = changeEach(text, changePart, "change", goesBack);
  refused.merge(changeEach(text, addPart, "add to", goesBack));
  const auto keepsAsides = [&text](const Manifest& before, const Manifest&,
                                   const std::string& bytes, const FieldPath& path)
  {
    const auto kind = valueAt(AnyConstReference(before), path).type()->kind();
    EXPECT_TRUE(kind == TypeKind::Struct || asidesIn(bytes) == asidesIn(text.bytes)) << bytes;
  };
  refused.merge(changeEach(text, removePart, "remove", keepsAsides));
  return refused;
}
} // namespace

TEST(Changes, TouchNothingElse)
{
  std::set<std::string> refused;
  for (const Text& text : textsIn({EXAMPLE_MANIFESTS, GOLDEN_FILES "/messy"}))
  {
    refused.merge(changeInAllWays(text));
  }
  std::string lines;
  for (const std::string& line : refused)
  {
    lines += line + '\n';
  }
  EXPECT_EQ(lines, contentOf(GOLDEN_FILES "/refusals.txt"));
}

TEST(Changes, KeepEachForm)
{
  for (const Text& text : textsIn({EXAMPLE_MANIFESTS}))
  {
    const std::set<std::string> refused = changeInAllWays(text);
    for (const Text& form : formsOf(text))
    {
      EXPECT_EQ(changeInAllWays(form), refused) << text.name;
    }
  }
}

TEST(Changes, MakeAnyManifestAnyOther)
{
  const std::vector<Text> texts = textsIn({EXAMPLE_MANIFESTS, GOLDEN_FILES "/messy"});
  std::set<std::string> refused;
  for (const Text& from : texts)
  {
    for (const Text& to : texts)
    {
      try
      {
        changed(from.bytes, read(from.bytes), read(to.bytes), CommentEntries::Stay);
      }
      catch (const Refusal& refusal)
      {
        refused.insert(from.name + ": " + refusal.what());
      }
    }
  }
  EXPECT_THAT(
      refused,
      testing::ElementsAre(
          R"(document-type.xml: this comes out of the entity "product", within which nothing is changed)",
          testing::StartsWith("latin-1.xml: names.el_GR: a manifest cannot hold this value;")));
}

TEST(WebContent, IsReadBesideAPackageAsTheSecondReaderStoresIt)
{
  for (const std::string manifest :
       {"<package/>", "<package uuid='u'><contents/></package>",
        "<package><contents><webContent path='a'/><webContent path='b'/></contents></package>",
        "<package><contents><webContent/></contents></package>",
        "<package><contents><webContent path='a'/></contents><contents/></package>",
        "<package><contents/><contents><webContent path='a'/></contents></package>"})
  {
    vesk::PackageInfo2 info;
    vesk::PackageInfo package;
    vesk::LoadError error;
    ASSERT_TRUE(vesk::readManifestText(manifest, info, error));
    std::optional<vesk::WebInfo> web = vesk::WebInfo{"of before"};
    ASSERT_TRUE(vesk::readManifestText(manifest, package, web, error));
    const vesk::AnyValue stored = info.contents()["web"];
    ASSERT_EQ(web.has_value(), stored.isValid()) << manifest;
    EXPECT_EQ(web ? web->path : "", stored.isValid() ? stored.as<vesk::WebInfo>().path : "")
        << manifest;
    EXPECT_EQ(package.uuid(), info.uuid);
    const std::string rewritten =
        writeManifest(package, web ? vesk::AnyValue(*web) : vesk::AnyValue());
    EXPECT_EQ(rewritten.find("webContent") != std::string::npos, web.has_value()) << rewritten;
    const auto read = readManifest(rewritten, error);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->web.isValid(), web.has_value());
    EXPECT_EQ(read->web.isValid() ? read->web.as<vesk::WebInfo>().path : "", web ? web->path : "");
  }
}
