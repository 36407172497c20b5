// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_BATCH_HPP
#define PYTHON_CORE_BATCH_HPP

#include "failures.hpp"
#include "unlocked.hpp"

#include <atomic>
#include <pybind11/pybind11.h>
#include <string>
#include <type_traits>
#include <vector>

namespace vesk::python
{

/// Ends batches early, from any thread: what of them is not done yet is left out.
struct Stop
{
  std::atomic<bool> isSet = false;
};

/// Works on files without the interpreter's lock: gives for each path what \p present makes of what
/// \p work gives, or the Failure that ended it. What runs Python's code is left to who takes these:
/// a thread in the midst of that is unwound when the interpreter ends, through C++ that cannot bear it.
template <typename Work, typename Present>
py::list forEachPath(const std::vector<std::string>& paths, const Stop& stop, Work work,
                     Present present)
{
  auto outcomes = unlocked(
      [&]
      {
        std::vector<Outcome<std::invoke_result_t<Work, const std::string&>>> done;
        done.reserve(paths.size());
        for (const std::string& path : paths)
        {
          if (stop.isSet)
          {
            break;
          }
          done.push_back(outcomeOf([&] { return work(path); }));
        }
        return done;
      });
  py::list results;
  for (auto& outcome : outcomes)
  {
    results.append(outcome.failure ? py::cast(Failure{outcome.failure})
                                   : present(std::move(*outcome.result)));
  }
  return results;
}

} // namespace vesk::python

#endif
