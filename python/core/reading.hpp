// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_READING_HPP
#define PYTHON_CORE_READING_HPP

#include <pybind11/pybind11.h>
#include <string>

/// Manifests out of files and bytes, and into them.
namespace vesk::python
{

namespace py = pybind11;

/// The bytes of the file at a path, in the encoding of the file system. Throws BadFile, and BadManifest
/// for a file that is larger than any manifest can be. Needs no lock of the interpreter.
std::string fileBytes(const std::string& path);

void defineReading(py::module_& module);

} // namespace vesk::python

#endif
