// SPDX-License-Identifier: Apache-2.0
// What happens when memory runs out, at each allocation in turn.
//
// Only allocations by operator new fail, and none that the XML toolkit makes itself: it does not
// check each of its own, and leaks or ends the program when one fails.
#include "filledpackage.hpp"
#include "support.hpp"

#include <check/manifestcheck.hpp>
#include <package/interop/xovalue.hpp>
#include <package/manifest2/loadmanifest.hpp>
#include <vesk/runtimetypes.hpp>

#include <cstdlib>
#include <cstring>
#include <link.h>
#include <new>

using namespace vesk;

namespace
{
struct Code
{
  std::uintptr_t begin;
  std::uintptr_t end;
};

/// Where the toolkit's code is.
std::vector<Code> toolkitCode()
{
  std::vector<Code> found;
  const auto visit = [](dl_phdr_info* library, std::size_t, void* result)
  {
    for (int i = 0; i < library->dlpi_phnum; ++i)
    {
      const ElfW(Phdr)& part = library->dlpi_phdr[i];
      if (std::strstr(library->dlpi_name, "/libQt5") != nullptr && (part.p_flags & PF_X) != 0)
      {
        const std::uintptr_t begin = library->dlpi_addr + part.p_vaddr;
        static_cast<std::vector<Code>*>(result)->push_back({begin, begin + part.p_memsz});
      }
    }
    return 0;
  };
  dl_iterate_phdr(visit, &found);
  return found;
}

const std::vector<Code> toolkit = toolkitCode();
long untilFailure = 0; // allocations; 0 when none is to fail
long inUse = 0;        // allocations that have not been freed

/// Counts an allocation; true when it is to fail.
bool countAllocation(const void* caller)
{
  const auto address = reinterpret_cast<std::uintptr_t>(caller);
  return untilFailure > 0 &&
         std::none_of(toolkit.begin(), toolkit.end(),
                      [address](const Code& code)
                      { return address >= code.begin && address < code.end; }) &&
         --untilFailure == 0;
}

enum class Afterwards
{
  Unchanged,
  Valid
};

/// Runs \p operation on copies of \p original, first with its first allocation failing, then with
/// its second, and so on until none fails. Nothing may leak. When the operation throws, the copy
/// must be as \p afterwards says; else the operation must be finished.
template <typename Value>
void failEverywhere(const char* name, Afterwards afterwards, const Value& original,
                    const std::function<void(Value&)>& operation)
{
  const std::string before = contentIn(original);
  std::string finished;
  long failing = 0;
  for (bool isDone = false; !isDone; ++failing)
  {
    bool isAsItMayBe = true;
    const long inUseBefore = inUse;
    {
      Value value(original);
      untilFailure = failing; // none in the first run: what it creates on first use stays
      try
      {
        operation(value);
        isDone = std::exchange(untilFailure, 0) > 0;
        finished = failing == 0 ? contentIn(value) : finished;
        isAsItMayBe = contentIn(value) == finished;
      }
      catch (const std::bad_alloc&)
      {
        isAsItMayBe = contentIn(value) == before || afterwards == Afterwards::Valid;
      }
      untilFailure = 0;
    }
    const bool isAllFreed = inUse == inUseBefore || failing == 0;
    EXPECT_TRUE(isAsItMayBe) << name << " has changed its target at allocation " << failing;
    EXPECT_TRUE(isAllFreed) << name << " leaks at allocation " << failing;
  }
  EXPECT_GT(failing, 3) << name;
}

/// One of everything, in texts that need memory.
struct OneOfEach : DistinctValues
{
  static int length(const std::string&) { return 1; }
  std::string text(const std::string& member)
  {
    return "a text of some length: " + DistinctValues::text(member);
  }
  static std::vector<std::string> keys() { return {"a language of some length"}; }
};

template <int number>
struct Strange
{};

/// Describes types for the first time while the allocation with this number fails, and then again.
/// Returns whether there was no such allocation.
template <int number>
bool failToDescribe()
{
  using Map = std::map<std::string, std::list<Strange<number>>>;
  auto* const own = new PlainType<Strange<number>, TypeKind::Unknown>("strange");
  bool isRegistered = false;
  untilFailure = number;
  try
  {
    isRegistered = registerType(typeid(Strange<number>), own);
    describeStruct("Peer", {{"maps", typeOf<Map>()}});
  }
  catch (const std::bad_alloc&)
  {}
  const bool hasNotFailed = untilFailure > 0;
  untilFailure = 0;
  EXPECT_NE(isRegistered, registerType(typeid(Strange<number>), own));
  EXPECT_EQ(typeOf<Map>()->name(), "map<string, list<strange>>");
  const AnyValue peer(*describeStruct("Peer", {{"maps", typeOf<Map>()}}));
  EXPECT_EQ(peer.member("maps").as<Map>().size(), 0U);
  return hasNotFailed;
}

template <int... numbers>
void failToDescribeEverywhere(std::integer_sequence<int, numbers...>)
{
  const std::vector<bool> haveNotFailed{failToDescribe<numbers + 1>()...};
  EXPECT_TRUE(!haveNotFailed.front() && haveNotFailed.back());
}
} // namespace

void* operator new(std::size_t size)
{
  void* const memory = countAllocation(__builtin_return_address(0)) ? nullptr : std::malloc(size);
  if (memory == nullptr)
  {
    throw std::bad_alloc();
  }
  ++inUse;
  return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
  void* const memory = countAllocation(__builtin_return_address(0)) ? nullptr : std::malloc(size);
  inUse += memory != nullptr ? 1 : 0;
  return memory;
}

void operator delete(void* memory) noexcept
{
  inUse -= memory != nullptr ? 1 : 0;
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

TEST(Allocation, MayFailAnywhere)
{
  ASSERT_FALSE(toolkit.empty());
  log::removeHandler(log::defaultHandler);
  const TemporaryFolder folder;
  const auto package = filled<PackageInfo, OneOfEach>();
  const auto other = filled<PackageInfo>(OneOfEach{DistinctValues(1000)});
  const std::string manifest = package.saveToManifestContent();
  const std::string file = folder.file("m.xml", manifest);
  const std::string malformed = // nested beyond what is read before the parser starts
      folder.file("malformed.xml", "<a><b x='" + std::string(2000, 'x') + "'><c><d><e><f></no>");
  const std::string nested =
      folder.file("nested.xml", "<!DOCTYPE a [<!ENTITY b '<c/>'>]><a>&b;</a>");
  XO::XOValue variant;
  toXOValue(package, variant);
  const auto members = AnyConstReference(other).to<std::map<std::string, AnyValue>>();

  const std::vector<std::pair<const char*, std::function<void(PackageInfo&)>>> allOrNothing{
      {"text", [&](PackageInfo& p) { p.loadFromManifestContent(manifest); }},
      {"file", [&](PackageInfo& p) { p.loadFromManifestFile(file); }},
      {"document type", [&](PackageInfo& p) { p.loadFromManifestFile(nested); }},
      {"malformed file", [&](PackageInfo& p) { EXPECT_FALSE(p.loadFromManifestFile(malformed)); }},
      {"second reader", [&](PackageInfo&) { PackageInfo{loadManifest(file)}; }},
      {"both readers",
       [&](PackageInfo& p)
       {
         QFile device(QString::fromStdString(file));
         device.open(QIODevice::ReadOnly);
         PackageInfo2 info;
         LoadError error;
         EXPECT_FALSE(p.readManifestFile(malformed, error));
         readManifestDevice(device, p, info, error);
       }},
      {"check", [&](PackageInfo&) { check::checkFile(file); }},
      {"write", [&](PackageInfo& p) { p.saveToManifestFile(folder.path("written.xml")); }},
      {"copy and move", [](PackageInfo& p) { AnyValue{PackageInfo(p)}; }},
      {"assign", [&](PackageInfo& p) { p = other; }},
      {"report", [](PackageInfo& p) { printed(p); }},
      {"to a variant",
       [](PackageInfo& p)
       {
         XO::XOValue value;
         toXOValue(p, value);
         const XO::XOValue copy(value);
         EXPECT_TRUE(copy == value);
         printed(copy);
       }},
      {"from a variant", [&](PackageInfo&) { PackageInfo{variant}; }},
      {"generic", [](PackageInfo& p) { AnyValue(p).to<std::map<std::string, AnyValue>>(); }},
      {"convert", [&](PackageInfo& p) { AnyReference(p).set(members); }},
  };
  for (const auto& [name, operation] : allOrNothing)
  {
    failEverywhere(name, Afterwards::Unchanged, package, operation);
  }
  failEverywhere<PackageInfo>("trim", Afterwards::Valid, package,
                              [](PackageInfo& p) { p.trimExtraInfo(); });
  failEverywhere<PackageInfo>("add a variant", Afterwards::Valid, package,
                              [&](PackageInfo& p) { fromXOValue(p, variant); });
  failEverywhere<BehaviorInfo>("descriptor", Afterwards::Unchanged, package.behaviors().front(),
                               [&](BehaviorInfo& b) { b = other.behaviors().front(); });
  failEverywhere<DialogInfo>("descriptor", Afterwards::Unchanged, package.dialogs().front(),
                             [&](DialogInfo& d) { d = other.dialogs().front(); });
  failEverywhere<LanguageInfo>("descriptor", Afterwards::Unchanged, package.languages().front(),
                               [&](LanguageInfo& l) { l = other.languages().front(); });
  EXPECT_THROW((untilFailure = 1, variant.arraySetSize(1)), std::bad_alloc);
  EXPECT_EQ(variant.getSize(), 20);
  failToDescribeEverywhere(std::make_integer_sequence<int, 16>());
}
