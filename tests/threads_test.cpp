// SPDX-License-Identifier: Apache-2.0
// Distinct objects in many threads at once. Each test runs in a process of its own, so that what is
// made on first use is made by the threads.
#include "filledpackage.hpp"
#include "support.hpp"

#include <check/manifestcheck.hpp>
#include <package/interop/xovalue.hpp>
#include <package/manifest2/loadmanifest.hpp>

#include <atomic>
#include <thread>

using vesk::PackageInfo;

namespace
{
constexpr std::size_t many = 8;

/// The results of \p work in many threads that start it together; it gets the number of its thread.
template <typename Work>
auto inManyThreads(Work work)
{
  std::vector<decltype(work(many))> results(many);
  std::atomic<std::size_t> waiting = many;
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < many; ++i)
  {
    threads.emplace_back(
        [&, i]
        {
          --waiting;
          while (waiting > 0)
          {
            std::this_thread::yield();
          }
          results[i] = work(i);
        });
  }
  for (std::thread& thread : threads)
  {
    thread.join();
  }
  return results;
}

template <typename... Values>
std::vector<vesk::TypeInterface* (*)()> descriptionsOf()
{
  return {&vesk::typeOf<Values>...};
}

/// Passes a package through all that can be done with it.
std::string passedThroughAll(const std::string& manifest, const TemporaryFolder& folder)
{
  PackageInfo package;
  EXPECT_TRUE(package.loadFromManifestFile(manifest));
  EXPECT_TRUE(package.loadFromManifestContent(contentOf(manifest)));
  const std::string path = folder.path("m.xml");
  EXPECT_TRUE(package.saveToManifestFile(path));
  XO::XOValue value;
  package.toXOValue(value);
  PackageInfo trimmed(value);
  trimmed.trimExtraInfo();
  std::string all = contentOf(path) + package.saveToManifestContent() + contentIn(package) +
                    printed(package) + printed(value) + contentIn(trimmed) +
                    contentIn(PackageInfo(vesk::loadManifest(path))) +
                    contentIn(vesk::AnyValue(package).to<std::map<std::string, vesk::AnyValue>>());
  for (const vesk::check::Finding& finding : vesk::check::checkFile(manifest))
  {
    all += finding.message + finding.place;
  }
  return all;
}
} // namespace

TEST(Threads, DescribeEachTypeOnce)
{
  using namespace vesk;
  const auto describe = descriptionsOf<
      PackageInfo, BehaviorInfo, DialogInfo, LanguageInfo, PackageInfo2, PackageService,
      RobotRequirement, MirelRequirement, AnyValue, bool, int, unsigned char, float, double,
      std::string, std::vector<int>, std::list<std::string>, std::list<BehaviorInfo>,
      std::map<std::string, std::list<std::string>>, std::map<int, AnyValue>,
      std::pair<std::string, std::vector<float>>, std::vector<std::list<std::map<int, bool>>>>();
  const auto found = inManyThreads(
      [&](std::size_t thread)
      {
        std::vector<TypeInterface*> types(describe.size());
        for (std::size_t i = 0; i < types.size(); ++i)
        {
          const std::size_t next = (i + thread * 3) % types.size();
          types[next] = describe[next]();
        }
        types.push_back(getStruct("::vesk::PackageInfoPrivate"));
        return std::pair(types, contentIn(filled<PackageInfo>()));
      });
  EXPECT_THAT(found, testing::Each(found.front()));
}

TEST(Threads, UseDistinctPackages)
{
  const std::vector<std::string> manifests = exampleManifests();
  const auto made = inManyThreads(
      [&](std::size_t thread)
      {
        const TemporaryFolder folder;
        std::map<std::string, std::string> results;
        for (std::size_t i = 0; i < manifests.size(); ++i)
        {
          const std::string& manifest = manifests[(i + thread) % manifests.size()];
          results[manifest] = passedThroughAll(manifest, folder);
        }
        return results;
      });
  EXPECT_GT(manifests.size(), 1U);
  EXPECT_TRUE(std::all_of(made.begin(), made.end(),
                          [&](const auto& results) { return results == made.front(); }));
}

TEST(Threads, LogWhileHandlersComeAndGo)
{
  vesk::log::removeHandler(vesk::log::defaultHandler);
  const auto ignored = [](const vesk::log::Message&) {};
  std::vector<int> heard(many); // outlives messages that come after the handler has gone
  const auto heardAtTheEnd = inManyThreads(
      [&heard, &ignored](std::size_t thread)
      {
        const auto self = std::this_thread::get_id();
        for (int i = 0; i < 50; ++i)
        {
          const vesk::log::HandlerId id = vesk::log::addHandler(
              [&heard, &ignored, thread, self](const vesk::log::Message&)
              {
                if (std::this_thread::get_id() == self)
                {
                  ++heard[thread];
                  vesk::log::removeHandler(vesk::log::addHandler(ignored));
                }
              });
          EXPECT_FALSE(PackageInfo().loadFromManifestContent("<broken"));
          EXPECT_THROW(vesk::loadManifest("/nowhere"), std::runtime_error);
          vesk::log::addCategory("test." + std::to_string(i)).setLevel(vesk::log::Level::Info);
          EXPECT_TRUE(vesk::log::removeHandler(id));
        }
        return heard[thread];
      });
  EXPECT_THAT(heardAtTheEnd, testing::Each(100));
}
