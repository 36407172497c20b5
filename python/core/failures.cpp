// SPDX-License-Identifier: Apache-2.0
#include "failures.hpp"

#include "logging.hpp"
#include "values.hpp"

#include <edit/fieldpath.hpp>

#include <cstring>
#include <new>

namespace vesk::python
{
namespace
{
py::object errors(const char* name) { return py::module_::import("veskpackage.errors").attr(name); }

py::object pathOrNone(const std::string& path)
{
  if (path.empty())
  {
    return py::none();
  }
  PyObject* const decoded =
      PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size()));
  return py::reinterpret_steal<py::object>(decoded);
}

py::object toManifestError(const LoadError& error)
{
  logFailure(error.path, error.line, error.column, error.message);
  return errors("ManifestError")(toText(error.message), pathOrNone(error.path), error.line,
                                 error.column, error.isBeyondLimits);
}

py::object toOsError(const BadFile& failure)
{
  const std::string reason = std::strerror(failure.number);
  logFailure(failure.path, 0, 0, reason);
  // Called so, it makes a FileNotFoundError and the like.
  return py::reinterpret_borrow<py::object>(PyExc_OSError)(failure.number, toText(reason),
                                                           pathOrNone(failure.path));
}

py::object toEditError(const BadEdit& failure)
{
  const source::Place place = failure.place.value_or(source::Place{0, 0, 0});
  logFailure({}, place.line, place.utf16Column, failure.message);
  return errors("EditError")(toText(failure.message), py::none(), place.line, place.utf16Column);
}

/// Throws on any other exception.
py::object toException(const std::exception_ptr& thrown)
{
  try
  {
    std::rethrow_exception(thrown);
  }
  catch (const BadManifest& failure)
  {
    return toManifestError(failure.error);
  }
  catch (const BadFile& failure)
  {
    return toOsError(failure);
  }
  catch (const BadEdit& failure)
  {
    return toEditError(failure);
  }
  catch (const edit::FieldError& failure)
  {
    return errors("FieldError")(toText(failure.what()));
  }
  catch (const std::bad_alloc&)
  {
    return py::reinterpret_borrow<py::object>(PyExc_MemoryError)();
  }
}

// By value, as pybind11 calls it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void translate(std::exception_ptr thrown)
{
  const py::object exception = toException(thrown);
  PyErr_SetObject(py::type::handle_of(exception).ptr(), exception.ptr());
}
} // namespace

void defineFailures(py::module_& module)
{
  py::register_exception_translator(&translate);
  py::class_<Failure>(module, "Failure")
      .def("exception", [](const Failure& failure) { return toException(failure.thrown); });
}

} // namespace vesk::python
