// SPDX-License-Identifier: Apache-2.0
#include "printing.hpp"

#include <vesk/log.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <map>
#include <memory>
#include <mutex>
#include <ostream>
#include <utility>
#include <vector>

namespace vesk::log
{
namespace detail
{
struct CategoryState
{
  CategoryState(std::string categoryName, Level initialLevel)
      : name(std::move(categoryName)), level(initialLevel)
  {}

  const std::string name;
  std::atomic<Level> level;
};
} // namespace detail

namespace
{
struct AddedHandler
{
  HandlerId id;
  Handler handler;
};
using Handlers = std::vector<AddedHandler>;

struct Log
{
  std::mutex mutex;
  std::map<std::string, detail::CategoryState> categories;
  Level initialLevel = Level::Info;
  // Replaced, never changed, so that a message is handed out without holding the mutex.
  std::shared_ptr<const Handlers> handlers =
      std::make_shared<Handlers>(Handlers{{defaultHandler, writeToStandardError}});
  HandlerId nextId = defaultHandler + 1;
};

// Never destroyed: other objects with static lifetime may log while the program ends.
Log& theLog()
{
  static Log& log = *new Log;
  return log;
}
} // namespace

const std::string& Category::name() const { return state->name; }

Level Category::level() const { return state->level; }

void Category::setLevel(Level level) { state->level = level; }

bool Category::accepts(Level level) const
{
  return level > Level::Silent && level <= state->level.load();
}

Category addCategory(const std::string& name)
{
  Log& log = theLog();
  const std::lock_guard lock(log.mutex);
  return Category(log.categories.try_emplace(name, name, log.initialLevel).first->second);
}

void setLevel(Level level)
{
  Log& log = theLog();
  const std::lock_guard lock(log.mutex);
  log.initialLevel = level;
  for (auto& [name, category] : log.categories)
  {
    category.level = level;
  }
}

void write(Category category, Level level, const std::string& text, const std::string& function,
           const std::string& file, int line)
{
  if (!category.accepts(level))
  {
    return;
  }
  std::shared_ptr<const Handlers> handlers;
  {
    Log& log = theLog();
    const std::lock_guard lock(log.mutex);
    handlers = log.handlers;
  }
  const Message message{level, category.name(), text, function, file, line};
  for (const AddedHandler& added : *handlers)
  {
    try
    {
      added.handler(message);
    }
    catch (...) // NOLINT(bugprone-empty-catch)
    {}
  }
}

HandlerId addHandler(Handler handler)
{
  std::shared_ptr<const Handlers> replaced; // destroyed after unlocking, since that may log
  Log& log = theLog();
  const std::lock_guard lock(log.mutex);
  auto handlers = std::make_shared<Handlers>(*log.handlers);
  handlers->push_back({log.nextId, std::move(handler)});
  replaced = std::exchange(log.handlers, std::move(handlers));
  return log.nextId++;
}

bool removeHandler(HandlerId id)
{
  std::shared_ptr<const Handlers> replaced; // destroyed after unlocking, since that may log
  Log& log = theLog();
  const std::lock_guard lock(log.mutex);
  auto handlers = std::make_shared<Handlers>(*log.handlers);
  const auto found = std::find_if(handlers->begin(), handlers->end(),
                                  [id](const AddedHandler& added) { return added.id == id; });
  if (found == handlers->end())
  {
    return false;
  }
  handlers->erase(found);
  replaced = std::exchange(log.handlers, std::move(handlers));
  return true;
}

std::string nameOf(Level level)
{
  static constexpr std::array names{"silent", "fatal", "error", "warning", "info", "debug"};
  const auto number = static_cast<std::size_t>(level); // a negative one becomes too large as well
  return number < names.size() ? names[number] : "level " + std::to_string(static_cast<int>(level));
}

std::ostream& operator<<(std::ostream& out, Level level) { return out << nameOf(level); }

void writeToStandardError(const Message& message)
{
  std::string text = nameOf(message.level) + ": " + message.category + ": ";
  if (!message.function.empty())
  {
    text += message.function + ": ";
  }
  const std::string line = vesk::detail::withEscapedControls(text + message.text) + '\n';
  // One call, so that lines of several threads do not mix.
  static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

} // namespace vesk::log
