// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_LOG_HPP
#define VESK_LOG_HPP

#include <vesk/export.hpp>

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

/// The runtime's log: messages of a category, at a level, handed to every handler.
///
/// A library declares its category once and writes messages to it. A program decides what becomes
/// of them: it sets levels and adds handlers. At the start one handler is present, which writes to
/// standard error.
///
/// Every function here may be called from any thread at any time, also from within a handler and
/// during the program's end.
namespace vesk::log
{

/// How grave a message is: the lower the number, the graver. A category lets through messages at
/// its own level and graver ones. The numbers are fixed by the runtime.
enum class Level : int
{
  Silent = 0, ///< as a category's level: nothing gets through; no message has it
  Fatal = 1,
  Error = 2,
  Warning = 3,
  Info = 4, ///< the level of a new category
  Debug = 5
};

/// The level's name in lower case, as in "warning"; "level 7" for a number without one.
VESK_EXPORT std::string nameOf(Level level);
/// Prints the level's name.
VESK_EXPORT std::ostream& operator<<(std::ostream& out, Level level);

/// One message as a handler sees it. Text is UTF-8.
struct Message
{
  Level level = Level::Error;
  std::string category; ///< name of the category it was written to
  std::string text;
  std::string function; ///< name of the function that wrote it; may be empty
  std::string file;     ///< source file that wrote it; may be empty
  int line = 0;         ///< line in that file, from 1; 0 where there is none
};

namespace detail
{
struct CategoryState;
}

/// A declared category: a small handle, copied freely. The category itself lives to the end of the
/// process.
class VESK_EXPORT Category
{
public:
  const std::string& name() const;

  Level level() const;
  void setLevel(Level level);

  /// Whether a message at \p level gets through at the moment: its number is above 0 and not
  /// above the category's level.
  bool accepts(Level level) const;

private:
  friend VESK_EXPORT Category addCategory(const std::string& name);
  explicit Category(detail::CategoryState& declared) : state(&declared) {}

  detail::CategoryState* state;
};

/// Declares the category \p name, and gives the same one whenever it is declared again.
VESK_EXPORT Category addCategory(const std::string& name);

/// Sets the level of every category declared so far, and the level that later ones start with.
VESK_EXPORT void setLevel(Level level);

/// Gives \p text as a message to every handler, in the order in which they were added, on the
/// calling thread; does nothing when \p category does not accept \p level.
VESK_EXPORT void write(Category category, Level level, const std::string& text,
                       const std::string& function = {}, const std::string& file = {},
                       int line = 0);

/// Writes a message with the function, the source file and the line where it stands:
///
/// \code
/// VESK_LOG(category, vesk::log::Level::Warning, "no battery at " + port);
/// \endcode
///
/// The text is made only when the category accepts the level.
#define VESK_LOG(messageCategory, messageLevel, messageText)                                       \
  do                                                                                               \
  {                                                                                                \
    const ::vesk::log::Category veskCategory = (messageCategory);                                  \
    const ::vesk::log::Level veskLevel = (messageLevel);                                           \
    if (veskCategory.accepts(veskLevel))                                                           \
    {                                                                                              \
      ::vesk::log::write(veskCategory, veskLevel, (messageText), __func__, __FILE__, __LINE__);    \
    }                                                                                              \
  } while (false)

/// What receives messages. It can be called from several threads at once, and what it throws is
/// dropped, since logging must not change what a program does.
using Handler = std::function<void(const Message&)>;

/// Names one added handler; never given out twice.
using HandlerId = std::uint64_t;

/// Names the handler that is present at the start: \ref writeToStandardError.
constexpr HandlerId defaultHandler = 0;

/// Adds \p handler behind those present and gives the id to remove it by.
VESK_EXPORT HandlerId addHandler(Handler handler);

/// Removes a handler; false when no handler has this id (any more). A message that another thread
/// is writing at this moment may still reach it, so what the handler refers to must outlive that.
VESK_EXPORT bool removeHandler(HandlerId id);

/// Writes a message as one line to standard error: level, category, function where there is one,
/// text. Control characters, which a hostile file can bring into a message, are written as "\x0a"
/// and the like. A program that removed the default handler can add this one again.
VESK_EXPORT void writeToStandardError(const Message& message);

} // namespace vesk::log

#endif
