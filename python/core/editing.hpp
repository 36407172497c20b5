// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_EDITING_HPP
#define PYTHON_CORE_EDITING_HPP

#include <pybind11/pybind11.h>

namespace vesk::python
{

namespace py = pybind11;

void defineEditing(py::module_& module);

} // namespace vesk::python

#endif
