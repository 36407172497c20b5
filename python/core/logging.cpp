// SPDX-License-Identifier: Apache-2.0
#include "logging.hpp"

#include "values.hpp"

#include <vesk/log.hpp>

#include <atomic>
#include <memory>
#include <optional>

namespace vesk::python
{
namespace
{
// Changed under the interpreter's lock only.
std::optional<log::HandlerId> forwarding;

/// Lets go of what Python has under its lock, on whatever thread the last message ends.
std::shared_ptr<py::function> shared(const py::function& function)
{
  return {new py::function(function), [](py::function* held)
          {
            const py::gil_scoped_acquire lock;
            delete held;
          }};
}

/// Gives every message to \p receive, instead of writing it to standard error.
void forwardLog(const py::function& receive)
{
  const auto handler = [receiver = shared(receive)](const log::Message& message)
  {
    const py::gil_scoped_acquire lock;
    try
    {
      (*receiver)(static_cast<int>(message.level), toText(message.category), toText(message.text),
                  toText(message.function));
    }
    catch (py::error_already_set& error)
    {
      if (error.matches(PyExc_KeyboardInterrupt))
      {
        PyErr_SetInterrupt(); // to be raised where Python goes on
      }
      error.discard_as_unraisable("a handler of veskpackage's log");
    }
  };
  const log::HandlerId added = log::addHandler(handler);
  if (forwarding)
  {
    log::removeHandler(*forwarding);
  }
  else
  {
    log::removeHandler(log::defaultHandler);
  }
  forwarding = added;
}
} // namespace

void logFailure(const LoadError& error)
{
  if (forwarding)
  {
    const std::string source = error.path.empty() ? "a manifest" : error.path;
    log::write(log::addCategory("veskpackage"), log::Level::Error,
               source + ':' + std::to_string(error.line) + ':' + std::to_string(error.column) +
                   ": " + error.message);
  }
}

void defineLogging(py::module_& module)
{
  module.def("forward_log", &forwardLog, py::arg("receive"));
  module.def("stop_forwarding_log",
             []
             {
               if (forwarding)
               {
                 log::removeHandler(*forwarding);
                 forwarding.reset();
                 log::addHandler(log::writeToStandardError);
               }
             });
}

} // namespace vesk::python
