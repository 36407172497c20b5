// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <atomic>
#include <thread>

namespace vlog = vesk::log;
using testing::ElementsAre;
using vlog::Level;

TEST(Log, HandsAMessageToHandlersInTheirOrderUntilTheyAreRemoved)
{
  const vlog::Category category = vlog::addCategory("test.order");
  CapturedLog captured;
  std::vector<std::string> calls;
  const auto first = vlog::addHandler([&](const vlog::Message&) { calls.emplace_back("first"); });
  const auto second = vlog::addHandler(
      [&](const vlog::Message& message)
      {
        calls.emplace_back("second");
        throw std::runtime_error(message.text); // must not reach the writer
      });
  const auto third = vlog::addHandler([&](const vlog::Message&) { calls.emplace_back("third"); });
  vlog::write(category, Level::Error, "text", "function", "file.cpp", 7);
  EXPECT_THAT(calls, ElementsAre("first", "second", "third"));
  EXPECT_TRUE(vlog::removeHandler(first));
  EXPECT_FALSE(vlog::removeHandler(first));
  EXPECT_TRUE(vlog::removeHandler(second));
  vlog::write(category, Level::Error, "more");
  EXPECT_THAT(calls, ElementsAre("first", "second", "third", "third"));
  vlog::removeHandler(third);

  const vlog::Message& message = captured.messages.front();
  EXPECT_EQ(message.level, Level::Error);
  EXPECT_EQ(message.category + message.text + message.function + message.file,
            "test.ordertextfunctionfile.cpp");
  EXPECT_EQ(message.line, 7);
}

TEST(Log, LetsThroughWhatTheCategorysLevelAllows)
{
  CapturedLog captured;
  vlog::Category category = vlog::addCategory("test.level");
  EXPECT_EQ(category.level(), Level::Info);
  const auto written = [&](Level level)
  {
    captured.messages.clear();
    vlog::write(category, level, "text");
    return captured.messages.size() == 1;
  };
  EXPECT_TRUE(written(Level::Info));
  EXPECT_FALSE(written(Level::Debug));
  EXPECT_FALSE(written(Level::Silent));
  vlog::addCategory("test.level").setLevel(Level::Silent); // the same category
  EXPECT_FALSE(written(Level::Fatal));
  vlog::setLevel(Level::Debug);
  EXPECT_TRUE(written(Level::Debug));
  EXPECT_EQ(vlog::addCategory("test.later").level(), Level::Debug);
  vlog::setLevel(Level::Info);
}

TEST(Log, WritesALineToStandardErrorByDefault)
{
  testing::internal::CaptureStderr();
  vlog::writeToStandardError({Level::Warning, "category", "text", "function", "", 0});
  vlog::writeToStandardError({Level::Fatal, "category", "text", "", "", 0});
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "warning: category: function: text\nfatal: category: text\n");
}

TEST(Log, CanBeUsedFromManyThreadsAndFromHandlers)
{
  vlog::removeHandler(vlog::defaultHandler);
  const vlog::Category category = vlog::addCategory("test.threads");
  std::atomic<int> count{0};
  const auto counter = vlog::addHandler(
      [&](const vlog::Message& message)
      {
        ++count;
        if (message.text == "outer")
        {
          vlog::removeHandler(vlog::addHandler([](const vlog::Message&) {}));
          vlog::write(vlog::addCategory("test.threads.inner"), Level::Info, "inner");
        }
      });
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i)
  {
    threads.emplace_back(
        [&]
        {
          for (int n = 0; n < 100; ++n)
          {
            vlog::write(category, Level::Info, "outer");
          }
        });
  }
  for (std::thread& thread : threads)
  {
    thread.join();
  }
  vlog::removeHandler(counter);
  EXPECT_EQ(count, 8 * 100 * 2);
}
