// SPDX-License-Identifier: Apache-2.0
// Twice the input, of each kind in golden/bounds.txt, may take twice the time and memory, and hardly
// more. Time is counted in instructions, by callgrind, in which ctest runs this program.
#include "manifestpattern.hpp"
#include "support.hpp"

#include <check/manifestcheck.hpp>
#include <edit/commonsubsequence.hpp>
#include <edit/difference.hpp>
#include <edit/fieldvalue.hpp>
#include <edit/json.hpp>
#include <package/interop/xovalue.hpp>
#include <package/manifest2/loadmanifest.hpp>
#include <package/packageinfo.hpp>
#include <tools/veskpackage/output/unifieddiff.hpp>

#include <malloc.h>
#include <sstream>
#include <valgrind/valgrind.h>

using namespace vesk::edit;
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

// These replace the functions of the C library, for the toolkit as well.
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
  double bytes; ///< peak of memory
};
using Costs = std::map<std::string, Cost>;

/// The instructions of this program so far, from callgrind's log.
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

void expectNoMoreThanTwice(const Costs& once, const Costs& twice, double timesInstructions = 2.3)
{
  for (const auto& [work, cost] : twice)
  {
    // A little other work varies: a library's function is looked up when it is first called.
    EXPECT_LT(cost.instructions, timesInstructions * once.at(work).instructions + 20000) << work;
    EXPECT_LT(cost.bytes, 2.3 * once.at(work).bytes + 1000) << work;
  }
}

struct Kind
{
  std::string name;
  int n = 0;
  double times = 0;            ///< instructions at 2n divided by those at n, at most
  double bytesPerByte = 0;     ///< memory, at most
  double thousandsPerByte = 0; ///< instructions, at most
  std::string pattern;
};

std::ostream& operator<<(std::ostream& out, const Kind& kind) { return out << kind.name; }

std::vector<Kind> kinds()
{
  std::vector<Kind> all;
  std::istringstream lines(contentOf(GOLDEN_FILES "/bounds.txt"));
  for (std::string line; std::getline(lines, line);)
  {
    std::istringstream parts(line);
    if (Kind kind;
        parts >> kind.name >> kind.n >> kind.times >> kind.bytesPerByte >> kind.thousandsPerByte &&
        std::getline(parts >> std::ws, kind.pattern))
    {
      all.push_back(kind);
    }
  }
  return all;
}

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
      costOf([&] { tool::printUnifiedDiff(out, "left", joined(left), "right", joined(right)); });
  costs["differences" + name] =
      costOf([&] { differences(vesk::AnyConstReference(before), vesk::AnyConstReference(after)); });
  return costs;
}

class Bounds : public testing::TestWithParam<Kind>
{
protected:
  // The costs of what is created on first use must not be measured.
  static void SetUpTestSuite() { costsOf(contentOf(EXAMPLE_MANIFESTS "/greeting.xml")); }

  static std::string manifest(int factor)
  {
    QString pattern = QString::fromStdString(GetParam().pattern).replace("\\n", "\n");
    return expanded(pattern.replace("{n*", QStringLiteral("{%1*").arg(GetParam().n * factor)));
  }
};
} // namespace

INSTANTIATE_TEST_SUITE_P(, Bounds, testing::ValuesIn(kinds()),
                         [](const auto& test) { return test.param.name; });

TEST_P(Bounds, GrowWithTheManifest)
{
  const std::string twice = manifest(2);
  const Costs costs = costsOf(twice);
  expectNoMoreThanTwice(costsOf(manifest(1)), costs, GetParam().times);
  const auto size = static_cast<double>(twice.size());
  for (const auto& [work, cost] : costs)
  {
    EXPECT_LT(cost.bytes, GetParam().bytesPerByte * size + 100000) << work;
    EXPECT_LT(cost.instructions, 1000 * GetParam().thousandsPerByte * size + 1000000) << work;
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
