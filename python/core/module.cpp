// SPDX-License-Identifier: Apache-2.0
#include "checking.hpp"
#include "editing.hpp"
#include "failures.hpp"
#include "logging.hpp"
#include "reading.hpp"
#include "record.hpp"
#include "unlocked.hpp"

#include <exception>
#include <pthread.h>

namespace vesk::python
{
namespace
{
/// What veskpackage's Python code stands on. It is no interface for others: the types of its arguments
/// and results are in veskpackage/_core.pyi.
PyObject* newModule()
{
  auto module = py::reinterpret_steal<py::module_>(PyModule_New("veskpackage._core"));
  module.doc() = "The C++ part of veskpackage, for its own modules.";
  defineFailures(module);
  defineRecord(module);
  defineReading(module);
  defineChecking(module);
  defineEditing(module);
  defineLogging(module);
  module.attr("version") = VESKPACKAGE_VERSION;
  Py_AtExit(endWork);
  pthread_atfork(nullptr, nullptr, forgetWork);
  return module.release().ptr();
}

/// Gives each import the same module, as pybind11 knows a type once. In another interpreter than the main
/// one pybind11 would wait for ever, so that it must not even start there.
PyObject* importedModule(PyObject* /*about*/, PyModuleDef* /*definition*/)
{
  if (PyInterpreterState_Get() != PyInterpreterState_Main())
  {
    PyErr_SetString(PyExc_ImportError, "veskpackage can be imported in the main interpreter only");
    return nullptr;
  }
  try
  {
    static PyObject* const module = newModule();
    return Py_NewRef(module);
  }
  catch (py::error_already_set& error)
  {
    error.restore();
  }
  catch (const std::exception& error)
  {
    PyErr_SetString(PyExc_ImportError, error.what());
  }
  return nullptr;
}
} // namespace
} // namespace vesk::python

// In two phases, as Python would give another interpreter a copy of a module that is made in one.
// NOLINTNEXTLINE(bugprone-reserved-identifier): Python makes the name
PyMODINIT_FUNC PyInit__core()
{
  static PyModuleDef_Slot slots[] = {
      {Py_mod_create, reinterpret_cast<void*>(&vesk::python::importedModule)}, {0, nullptr}};
  static PyModuleDef definition = {
      PyModuleDef_HEAD_INIT, "_core", nullptr, 0, nullptr, slots, nullptr, nullptr, nullptr};
  return PyModuleDef_Init(&definition);
}
