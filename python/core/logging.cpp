// SPDX-License-Identifier: Apache-2.0
#include "logging.hpp"

#include "values.hpp"

#include <vesk/log.hpp>

#include <memory>

namespace vesk::python
{
namespace
{
// Changed under the interpreter's lock only.
log::HandlerId receiving = log::defaultHandler;
bool isForwarding = false;

/// Gives every message to \p handler, instead of what has received them so far.
void receiveWith(const log::Handler& handler)
{
  const log::HandlerId added = log::addHandler(handler);
  log::removeHandler(receiving);
  receiving = added;
}

/// Lets go of what Python has under its lock, on whatever thread the last message ends.
std::shared_ptr<py::function> shared(const py::function& function)
{
  return {new py::function(function), [](py::function* held)
          {
            const py::gil_scoped_acquire lock;
            delete held;
          }};
}

void forwardLog(const py::function& receive)
{
  receiveWith(
      [receiver = shared(receive)](const log::Message& message)
      {
        const py::gil_scoped_acquire lock;
        try
        {
          (*receiver)(static_cast<int>(message.level), toText(message.category),
                      toText(message.text), toText(message.function));
        }
        catch (py::error_already_set& error)
        {
          if (error.matches(PyExc_KeyboardInterrupt))
          {
            PyErr_SetInterrupt(); // to be raised where Python goes on
          }
          error.discard_as_unraisable("a handler of veskpackage's log");
        }
      });
  isForwarding = true;
}

void stopForwardingLog()
{
  if (isForwarding)
  {
    receiveWith(log::writeToStandardError);
    isForwarding = false;
  }
}
} // namespace

void logFailure(const std::string& path, int line, int column, const std::string& message)
{
  if (isForwarding)
  {
    std::string text = path.empty() ? "a manifest" : path;
    if (line != 0)
    {
      text += ':' + std::to_string(line) + ':' + std::to_string(column);
    }
    text += ": " + message;
    log::write(log::addCategory("veskpackage"), log::Level::Error, text);
  }
}

void defineLogging(py::module_& module)
{
  module.def("forward_log", &forwardLog, py::arg("receive"));
  module.def("stop_forwarding_log", &stopForwardingLog);
}

} // namespace vesk::python
