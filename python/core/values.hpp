// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_VALUES_HPP
#define PYTHON_CORE_VALUES_HPP

#include <vesk/anyvalue.hpp>
#include <xovalue/xovalue.hpp>

#include <pybind11/pybind11.h>
#include <string>
#include <string_view>

/// Values of the type system and of the variant library as Python's, and back.
namespace vesk::python
{

namespace py = pybind11;

/// A text; bytes that are no UTF-8 become U+FFFD.
py::str toText(std::string_view bytes);

/// The UTF-8 of a str. Throws TypeError for anything else, and UnicodeEncodeError, a ValueError, for
/// lone surrogates, which no manifest can hold.
std::string fromText(py::handle text);

/// A copy: str, bool, list, dict, a Record for a struct, and None for an AnyValue that holds nothing.
/// A list or dict can be made as a class that stands on it, and the lists or dicts in it as another:
/// their items are put in past what these do.
py::object toPython(const AnyConstReference& value, py::handle outer = Py_None,
                    py::handle inner = Py_None);

/// Makes the viewed value what \p given is, in the forms that toPython() gives. Throws TypeError where
/// that does not fit, with \p value half changed.
void fromPython(const AnyReference& value, py::handle given);

/// None, str, bool and list. A tuple is read as a list, and what a variant has no form of as None.
/// \{
py::object toPython(const XO::XOValue& value);
XO::XOValue variantFrom(py::handle given);
/// \}

} // namespace vesk::python

#endif
