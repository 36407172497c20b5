// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

namespace vlog = vesk::log;
using testing::ElementsAre;
using vlog::Level;

TEST(Log, HandsAMessageToHandlersInTheirOrderUntilTheyAreRemoved)
{
  const vlog::Category category = vlog::addCategory("test.order");
  const CapturedLog captured;
  std::vector<std::string> calls;
  const auto first = vlog::addHandler(
      [&](const vlog::Message& message)
      {
        calls.emplace_back("first");
        throw std::runtime_error(message.text); // must not reach the writer
      });
  const auto second = vlog::addHandler([&](const vlog::Message&) { calls.emplace_back("second"); });
  VESK_LOG(category, Level::Error, "text");
  const int line = __LINE__ - 1;
  EXPECT_TRUE(vlog::removeHandler(first));
  EXPECT_FALSE(vlog::removeHandler(first));
  vlog::write(category, Level::Error, "more");
  EXPECT_THAT(calls, ElementsAre("first", "second", "second"));
  vlog::removeHandler(second);

  const vlog::Message& message = captured.messages.front();
  EXPECT_EQ(message.level, Level::Error);
  EXPECT_EQ(message.category, "test.order");
  EXPECT_EQ(message.text, "text");
  EXPECT_EQ(message.function, "TestBody");
  EXPECT_EQ(message.file, __FILE__);
  EXPECT_EQ(message.line, line);
}

TEST(Log, LetsThroughWhatTheCategorysLevelAllows)
{
  CapturedLog captured;
  vlog::Category category = vlog::addCategory("test.level");
  const auto levelsWritten = [&]
  {
    captured.messages.clear();
    for (int level = 0; level <= 5; ++level)
    {
      vlog::write(category, static_cast<Level>(level), "text");
    }
    return captured.messages.size();
  };
  EXPECT_EQ(levelsWritten(), 4U);
  vlog::addCategory("test.level").setLevel(Level::Silent); // the same category
  EXPECT_EQ(levelsWritten(), 0U);
  vlog::setLevel(Level::Debug);
  EXPECT_EQ(levelsWritten(), 5U);
  EXPECT_EQ(vlog::addCategory("test.later").level(), Level::Debug);
  vlog::setLevel(Level::Info);
}

TEST(Log, MakesATextOnlyForACategoryThatTakesIt)
{
  CapturedLog captured;
  int made = 0;
  const auto text = [&made] { return std::to_string(++made); };
  VESK_LOG(vlog::addCategory("test.macro"), Level::Debug, text());
  VESK_LOG(vlog::addCategory("test.macro"), Level::Info, text());
  EXPECT_EQ(made, 1);
  EXPECT_EQ(captured.messages.size(), 1U);
  std::string names;
  for (int level = -1; level <= 6; ++level)
  {
    names += printed(static_cast<Level>(level)) + ' ';
  }
  EXPECT_EQ(names, "level -1 silent fatal error warning info debug level 6 ");
}

TEST(Log, WritesALineToStandardErrorByDefault)
{
  testing::internal::CaptureStderr();
  vlog::writeToStandardError({Level::Warning, "category", "a\nb\x1b[0mé", "function", "", 0});
  vlog::writeToStandardError({Level::Fatal, "category", "text", "", "", 0});
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "warning: category: function: a\\x0ab\\x1b[0mé\nfatal: category: text\n");
}

TEST(Log, CanBeUsedFromHandlers)
{
  const CapturedLog captured;
  const auto handler = vlog::addHandler(
      [](const vlog::Message& message)
      {
        if (message.text == "outer")
        {
          vlog::removeHandler(vlog::addHandler([](const vlog::Message&) {}));
          vlog::write(vlog::addCategory("test.inner"), Level::Info, "inner");
        }
      });
  vlog::write(vlog::addCategory("test.outer"), Level::Info, "outer");
  vlog::removeHandler(handler);
  EXPECT_EQ(captured.messages.size(), 2U);

  struct LogsAtItsEnd
  {
    ~LogsAtItsEnd() { vlog::write(vlog::addCategory("test.end"), Level::Info, "removed"); }
  };
  vlog::removeHandler(
      vlog::addHandler([logging = std::make_shared<LogsAtItsEnd>()](const vlog::Message&) {}));
  EXPECT_EQ(captured.messages.back().text, "removed");
}
