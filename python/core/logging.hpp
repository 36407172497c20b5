// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_LOGGING_HPP
#define PYTHON_CORE_LOGGING_HPP

#include <package/loaderror.hpp>

#include <pybind11/pybind11.h>

/// The runtime's log in Python's.
namespace vesk::python
{

namespace py = pybind11;

/// Writes what PackageInfo would log of a manifest that it cannot read, if Python asked for the log.
void logFailure(const LoadError& error);

void defineLogging(py::module_& module);

} // namespace vesk::python

#endif
