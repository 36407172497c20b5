// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_UNLOCKED_HPP
#define PYTHON_CORE_UNLOCKED_HPP

#include <chrono>
#include <cxxabi.h>
#include <exception>
#include <new>
#include <optional>
#include <pybind11/pybind11.h>
#include <shared_mutex>
#include <utility>

namespace vesk::python
{

namespace py = pybind11;

/// What some work has given, or the exception that ended it.
template <typename Result>
struct Outcome
{
  std::optional<Result> result;
  std::exception_ptr failure;

  Result value() &&
  {
    if (failure)
    {
      std::rethrow_exception(failure);
    }
    return std::move(*result);
  }
};

template <typename Work>
auto outcomeOf(Work work)
{
  Outcome<decltype(work())> outcome;
  try
  {
    outcome.result.emplace(work());
  }
  catch (const abi::__forced_unwind&)
  {
    throw; // this thread is being ended
  }
  catch (...)
  {
    outcome.failure = std::current_exception();
  }
  return outcome;
}

/// Shared by all who work without the interpreter's lock, and never taken down.
inline std::shared_timed_mutex& working()
{
  static auto& mutex = *new std::shared_timed_mutex;
  return mutex;
}

/// Called in a forked child, which has none of the threads that may hold it.
inline void forgetWork() { new (&working()) std::shared_timed_mutex; }

/// Called when the interpreter has ended. The program goes on to take down what the libraries have, so that
/// threads finish what they are at; but a thread that waits for a file is not waited for.
inline void endWork() { static_cast<void>(working().try_lock_for(std::chrono::seconds(1))); }

/// Does some work while other threads have the interpreter's lock.
///
/// When the interpreter ends, it ends every thread that asks for the lock by unwinding its stack. That
/// must not meet a destructor, in which pybind11's own guard asks.
template <typename Work>
auto unlocked(Work work)
{
  PyThreadState* const thread = PyEval_SaveThread();
  auto outcome = outcomeOf(
      [&work]
      {
        const std::shared_lock lock(working());
        return work();
      });
  PyEval_RestoreThread(thread);
  return std::move(outcome).value();
}

} // namespace vesk::python

#endif
