// SPDX-License-Identifier: Apache-2.0
#include "checking.hpp"
#include "editing.hpp"
#include "failures.hpp"
#include "logging.hpp"
#include "reading.hpp"
#include "record.hpp"

/// What veskpackage's Python code stands on. It is no interface for others: the types of its arguments
/// and results are in veskpackage/_core.pyi.
PYBIND11_MODULE(_core, module)
{
  namespace python = vesk::python;
  module.doc() = "The C++ part of veskpackage, for its own modules.";
  python::defineFailures(module);
  python::defineRecord(module);
  python::defineReading(module);
  python::defineChecking(module);
  python::defineEditing(module);
  python::defineLogging(module);
  module.attr("version") = VESKPACKAGE_VERSION;
}
