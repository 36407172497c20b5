// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_LOGGING_HPP
#define PYTHON_CORE_LOGGING_HPP

#include <pybind11/pybind11.h>
#include <string>

/// The runtime's log in Python's.
namespace vesk::python
{

namespace py = pybind11;

/// Logs why a manifest cannot be read or edited, if Python asked for the log. The path is empty where there
/// is no file, and line and column are 0 where there is no place.
void logFailure(const std::string& path, int line, int column, const std::string& message);

void defineLogging(py::module_& module);

} // namespace vesk::python

#endif
