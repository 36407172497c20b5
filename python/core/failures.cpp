// SPDX-License-Identifier: Apache-2.0
#include "failures.hpp"

#include "logging.hpp"
#include "values.hpp"

#include <edit/fieldpath.hpp>

#include <cstring>

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

void raise(const py::object& exception)
{
  PyErr_SetObject(py::type::handle_of(exception).ptr(), exception.ptr());
}

void translate(std::exception_ptr thrown)
{
  try
  {
    std::rethrow_exception(std::move(thrown));
  }
  catch (const BadManifest& failure)
  {
    raise(toException(failure));
  }
  catch (const BadFile& failure)
  {
    raise(toException(failure));
  }
  catch (const BadEdit& failure)
  {
    const source::Place place = failure.place.value_or(source::Place{0, 0, 0});
    raise(errors("EditError")(toText(failure.message), py::none(), place.line, place.utf16Column));
  }
  catch (const edit::FieldError& failure)
  {
    raise(errors("FieldError")(toText(failure.what())));
  }
}
} // namespace

py::object toException(const BadManifest& failure)
{
  const LoadError& error = failure.error;
  logFailure(error);
  return errors("ManifestError")(toText(error.message), pathOrNone(error.path), error.line,
                                 error.column, error.isBeyondLimits);
}

py::object toException(const BadFile& failure)
{
  // Called so, it makes a FileNotFoundError and the like.
  return py::reinterpret_borrow<py::object>(PyExc_OSError)(
      failure.number, toText(std::strerror(failure.number)), pathOrNone(failure.path));
}

void defineFailures(py::module_&) { py::register_exception_translator(&translate); }

} // namespace vesk::python
