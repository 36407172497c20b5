// SPDX-License-Identifier: Apache-2.0
// Twice the input may take twice the time and memory, and hardly more. Time is counted in instructions,
// by callgrind, in which ctest runs this program.
#include "manifestpattern.hpp"
#include "support.hpp"

#include <package/interop/xovalue.hpp>
#include <package/manifest2/loadmanifest.hpp>
#include <package/packageinfo.hpp>

#include <check/manifestcheck.hpp>
#include <malloc.h>
#include <sstream>
#include <tools/veskpackage/commonsubsequence.hpp>
#include <tools/veskpackage/difference.hpp>
#include <tools/veskpackage/fieldvalue.hpp>
#include <tools/veskpackage/json.hpp>
#include <tools/veskpackage/unifieddiff.hpp>
#include <valgrind/valgrind.h>

using vesk::PackageInfo;

namespace
{
std::size_t memoryUsed = 0;
std::size_t mostMemoryUsed = 0;

void* taken(void* memory)
{
  memoryUsed += malloc_usable_size(memory);
  mostMemoryUsed = std::max(mostMemoryUsed, memoryUsed);
  return memory;
}

void* given(void* memory)
{
  memoryUsed -= malloc_usable_size(memory);
  return memory;
}
} // namespace

// In the place of the C library's, also for the toolkit.
// NOLINTBEGIN(*-reserved-identifier,cert-dcl37-c,readability-inconsistent-declaration-parameter-name)
#define EXPORTED extern "C" __attribute__((visibility("default")))
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* memory, std::size_t size);
extern "C" void __libc_free(void* memory);
EXPORTED void* malloc(std::size_t size) { return taken(__libc_malloc(size)); }
EXPORTED void* calloc(std::size_t count, std::size_t size)
{
  return taken(__libc_calloc(count, size));
}
EXPORTED void* realloc(void* memory, std::size_t size)
{
  return taken(__libc_realloc(given(memory), size));
}
EXPORTED void free(void* memory) { __libc_free(given(memory)); }
// NOLINTEND(*-reserved-identifier,cert-dcl37-c,readability-inconsistent-declaration-parameter-name)

namespace
{
struct Cost
{
  double instructions;
  double bytes; ///< of memory, where it was the most
};
using Costs = std::map<std::string, Cost>;

/// Of this program so far, as callgrind says in its log.
double instructions()
{
  static QFile log("bounds_test.log");
  if (!log.isOpen() && (RUNNING_ON_VALGRIND == 0 || !log.open(QIODevice::ReadOnly)))
  {
    throw std::runtime_error("must run as ctest does it");
  }
  VALGRIND_MONITOR_COMMAND("status internal");
  const std::string status = log.readAll().toStdString();
  const std::string label = "events-1: ";
  return std::stod(status.substr(status.rfind(label) + label.size()));
}

Cost costOf(const std::function<void()>& work)
{
  const double before = instructions();
  const std::size_t memoryBefore = mostMemoryUsed = memoryUsed;
  work();
  const auto bytes = static_cast<double>(mostMemoryUsed - memoryBefore);
  return {instructions() - before, bytes};
}

/// What all that can be done with a manifest costs.
Costs costsOf(const std::string& manifest)
{
  static const TemporaryFolder folder;
  static const CapturedLog quiet;
  const std::string path = folder.file("m.xml", manifest);
  vesk::check::Options everything;
  for (const vesk::check::Rule& rule : vesk::check::rules())
  {
    everything.severities[rule.tag] = vesk::check::Severity::Error;
  }
  PackageInfo package;
  vesk::PackageInfo2 second;
  XO::XOValue value;
  std::ostringstream report;
  Costs costs;
  costs["load a text"] = costOf([&] { package.loadFromManifestContent(manifest); });
  costs["load a file"] = costOf([&] { PackageInfo().loadFromManifestFile(path); });
  costs["load with the second reader"] = costOf(
      [&]
      {
        try
        {
          second = vesk::loadManifest(path);
        }
        catch (const std::runtime_error&)
        {}
      });
  costs["check"] = costOf([&] { vesk::check::checkText(manifest, everything); });
  costs["write"] = costOf([&] { package.saveToManifestContent(); });
  costs["report"] = costOf([&] { report << package; });
  costs["from the second record"] = costOf([&] { PackageInfo converted(second); });
  costs["to the variant"] = costOf([&] { package.toXOValue(value); });
  costs["from the variant"] = costOf([&] { PackageInfo converted(value); });
  costs["differences"] = costOf(
      [&]
      {
        const PackageInfo empty;
        differences(vesk::AnyConstReference(empty), vesk::AnyConstReference(package));
      });
  costs["trim"] = costOf([&] { package.trimExtraInfo(); });
  return costs;
}

void expectNoMoreThanTwice(const Costs& once, const Costs& twice)
{
  for (const auto& [work, cost] : twice)
  {
    // What little work there is beside varies: a library's function is found when it is first called.
    EXPECT_LT(cost.instructions, 2.3 * once.at(work).instructions + 20000) << work;
    EXPECT_LT(cost.bytes, 2.3 * once.at(work).bytes + 1000) << work;
  }
}

struct Kind
{
  const char* name;
  int n;
  const char* pattern; // {n*…} is repeated n times, or twice as often
};

std::ostream& operator<<(std::ostream& out, const Kind& kind) { return out << kind.name; }

const std::vector<Kind> kinds{
    {"Behaviors", 60,
     "<package uuid='u'><contents>{n*<behaviorContent path='#'><nature>x</nature></behaviorContent>"
     "}</contents></package>"},
    {"Services", 200,
     "<package uuid='u'><services>{n*<service name='#' autorun='1'/>}</services></package>"},
    {"UnknownElements", 200, "<package uuid='u'>{n*<x# y='1'/>}</package>"},
    {"Languages", 600,
     "<package uuid='u'><supportedLanguages>{n*<l>#</l>}</supportedLanguages><names>"
     "<name lang='1'>x</name></names></package>"},
    {"LanguagesInManySections", 300,
     "<package uuid='u'>{n*<descriptionLanguages><l>#</l></descriptionLanguages>}</package>"},
    {"LanguagesAndTexts", 200,
     "<package uuid='u'><descriptionLanguages>{n*<l>#_</l>}</descriptionLanguages><names>"
     "{n*<name lang='#_x'>t</name>}</names></package>"},
    {"TextsOfOneLanguage", 200,
     "<package uuid='u'><contents><behaviorContent path='p'><tags>{n*<tag lang='x'>#</tag>}</tags>"
     "</behaviorContent></contents></package>"},
    {"TextsOfManyLanguages", 200,
     "<package uuid='u'><contents><behaviorContent path='p'><tags>{n*<tag lang='#'>x</tag>}</tags>"
     "</behaviorContent></contents></package>"},
    {"Permissions", 200,
     "<package uuid='u'><contents><behaviorContent path='p'><permissions>{n*<canStandUp/>}"
     "</permissions></behaviorContent></contents></package>"},
    {"Topics", 200,
     "<package uuid='u'><contents><dialogContent topicName='t'>{n*<topic language='#' path='p#'/>}"
     "</dialogContent></contents></package>"},
    {"Text", 10000, "<package uuid='u'><names><name lang='x'>{n*x}</name></names></package>"},
    {"Attribute", 10000, "<package uuid='{n*x}'/>"},
    {"References", 2000,
     "<package uuid='u'><names><name lang='x'>{n*&amp;}</name></names></package>"},
    {"ReferencesInAnAttribute", 2000, "<package uuid='{n*&amp;}'/>"},
    {"BlanksAndLines", 3000, "<package uuid='u'>{n* \n}</package>"},
    {"Attributes", 1, "<package uuid='u'>{n*<x{500* a#='1'}/>}</package>"},
    {"Nesting", 1,
     "<package uuid='u'>{n*<names><name>{250*<x>}{250*</x>}</name></names>}</package>"},
    {"NestingBeyondTheLimit", 2000, "<package uuid='u'>{n*<x>}"},
    {"Comments", 200, "<package uuid='u'><names>{n*<!--x--><?x y?>}</names></package>"},
    {"CommentsInAText", 200,
     "<package uuid='u'><names><name lang='x'>{n*x<!--x--><?x?><![CDATA[<]]>}</name></names>"
     "</package>"},
    {"CommentInFront", 10000, "<!--{n*x}--><package uuid='u'/>"},
    {"EndsOfCData", 1000,
     "<package uuid='u'><contents><behaviorContent path='p'><autonomous><condition purpose='p'>"
     "{n*]]&gt;}</condition></autonomous></behaviorContent></contents></package>"},
    {"Entities", 300,
     "<!DOCTYPE package [<!ENTITY e0 'xy'>{30*<!ENTITY e@ 'x'>}<!ENTITY f '&e0;&e1;<x/>'>]>"
     "<package uuid='u'><names><name lang='x'>{n*&e2;&f;}</name></names></package>"},
    {"LongDocumentType", 500,
     "<!DOCTYPE package [{n*<!ELEMENT a# (b|c)><!ATTLIST a# x CDATA 'y'>}]><package/>"},
    {"CutShort", 10000, "<package uuid='u'><names><name lang='{n*x}"},
};

/// Two texts of n lines each.
struct Texts
{
  const char* name;
  int (*left)(int line, int n);
  int (*right)(int line, int n);
};

std::vector<std::string> linesOf(int (*value)(int line, int n), int n)
{
  std::vector<std::string> lines(static_cast<std::size_t>(n));
  std::generate(lines.begin(), lines.end(),
                [&, line = 0]() mutable { return "line " + std::to_string(value(line++, n)); });
  return lines;
}

PackageInfo packageOf(const std::vector<std::string>& lines)
{
  PackageInfo package;
  vesk::BehaviorInfo behavior;
  for (const std::string& line : lines)
  {
    package.addExecutableFile(line);
    package.setName(line, line);
    behavior.setPath(line);
    package.addBehavior(behavior);
  }
  return package;
}

/// What the tool's work on two texts costs, and on packages with their lines.
Costs costsOf(const Texts& texts, int n)
{
  const std::vector<std::string> left = linesOf(texts.left, n);
  const std::vector<std::string> right = linesOf(texts.right, n);
  const auto joined = [](const std::vector<std::string>& lines)
  {
    std::string text;
    for (const std::string& line : lines)
    {
      text += line + '\n';
    }
    return text;
  };
  const PackageInfo before = packageOf(left);
  const PackageInfo after = packageOf(right);
  std::ostringstream out;
  const std::string name = std::string(" of ") + texts.name + " texts";
  Costs costs;
  costs["lines in common" + name] = costOf([&] { commonSubsequence(left, right); });
  costs["unified diff" + name] =
      costOf([&] { printUnifiedDiff(out, "left", joined(left), "right", joined(right)); });
  costs["differences" + name] =
      costOf([&] { differences(vesk::AnyConstReference(before), vesk::AnyConstReference(after)); });
  return costs;
}

class Bounds : public testing::TestWithParam<Kind>
{
protected:
  // What is made on first use is not to count.
  static void SetUpTestSuite() { costsOf(contentOf(EXAMPLE_MANIFESTS "/greeting.xml")); }

  static std::string manifest(int factor)
  {
    QString pattern = GetParam().pattern;
    pattern.replace("{n*", QStringLiteral("{%1*").arg(GetParam().n * factor));
    return expanded(pattern);
  }
};
} // namespace

INSTANTIATE_TEST_SUITE_P(, Bounds, testing::ValuesIn(kinds),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(Bounds, GrowWithTheManifest)
{
  const std::string twice = manifest(2);
  const Costs costs = costsOf(twice);
  expectNoMoreThanTwice(costsOf(manifest(1)), costs);
  for (const auto& [work, cost] : costs)
  {
    EXPECT_LT(cost.bytes, 100 * static_cast<double>(twice.size()) + 100000) << work;
  }
}

TEST(BoundsOfTheTool, GrowWithTheTexts)
{
  const auto inOrder = [](int line, int) { return line; };
  for (const Texts& texts :
       {
           Texts{"equal", inOrder, inOrder},
           {"alike", inOrder, [](int line, int) { return line % 7 == 3 ? -line : line; }},
           {"different", inOrder, [](int line, int) { return -1 - line; }},
           {"reversed", inOrder, [](int line, int n) { return n - line; }},
           {"shuffled", inOrder, [](int line, int n) { return line * 7 % n; }},
           {"repetitive", [](int line, int) { return line % 2; },
            [](int line, int) { return line / 3 % 2; }},
       })
  {
    costsOf(texts, 10);
    expectNoMoreThanTwice(costsOf(texts, 150), costsOf(texts, 300));
  }
}

TEST(BoundsOfTheTool, GrowWithTheFieldAndItsValue)
{
  const auto costs = [](int n)
  {
    const auto repeated = [n](const QString& pattern)
    { return expanded(QString(pattern).replace("{n*", QStringLiteral("{%1*").arg(n))); };
    const std::string steps = repeated("a{n*.b[#]}");
    const std::string quoted = repeated(R"(names."{n*\n}")");
    const std::string languages = repeated(R"([{n*"#",}""])");
    const std::string names = "{" + repeated(R"({n*"#": "x",})") + R"("": ""})";
    PackageInfo package;
    const auto set = [&](const char* field, const std::string& value)
    { setAt(vesk::AnyReference(package), parseFieldPath(field), value); };
    Costs all;
    all["parse and print steps"] = costOf([&] { toText(parseFieldPath(steps)); });
    all["parse and print a name"] = costOf([&] { toText(parseFieldPath(quoted)); });
    all["set a list"] = costOf([&] { set("supportedLanguages", languages); });
    all["set a map"] = costOf([&] { set("names", names); });
    all["set a text"] = costOf([&] { set("version", names); });
    all["get"] = costOf([&] { toJson(vesk::AnyConstReference(package), 2); });
    return all;
  };
  costs(10);
  expectNoMoreThanTwice(costs(300), costs(600));
}
