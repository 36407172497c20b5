// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_FAILURES_HPP
#define PYTHON_CORE_FAILURES_HPP

#include <package/loaderror.hpp>
#include <source/lines.hpp>

#include <exception>
#include <optional>
#include <pybind11/pybind11.h>
#include <string>

/// What can go wrong, as C++ exceptions that become Python's, in veskpackage.errors.
namespace vesk::python
{

namespace py = pybind11;

/// A manifest that no reader takes: ManifestError.
struct BadManifest : std::exception
{
  explicit BadManifest(LoadError why) : error(std::move(why)) {}
  LoadError error;
};

/// A file that the system does not give: OSError, or what that is by its number.
struct BadFile : std::exception
{
  BadFile(int systemError, std::string file) : number(systemError), path(std::move(file)) {}
  int number;
  std::string path;
};

/// A change that cannot be made: EditError.
struct BadEdit : std::exception
{
  BadEdit(std::string what, std::optional<source::Place> where)
      : message(std::move(what)), place(where)
  {}
  std::string message;
  std::optional<source::Place> place;
};

/// One of these, or memory that ran out, for Python to make an exception of.
struct Failure
{
  std::exception_ptr thrown;
};

void defineFailures(py::module_& module);

} // namespace vesk::python

#endif
