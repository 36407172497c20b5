// SPDX-License-Identifier: Apache-2.0
#ifndef PYTHON_CORE_RECORD_HPP
#define PYTHON_CORE_RECORD_HPP

#include <vesk/anyvalue.hpp>

#include <cstddef>
#include <pybind11/pybind11.h>
#include <string>

namespace vesk::python
{

namespace py = pybind11;

/// A record of any of the types that recordTypes() names, by value. Python's classes stand on it; they
/// know a member by its place in the type's description.
class Record
{
public:
  /// An empty record of the type with this name in Python. Throws ValueError for other names.
  explicit Record(const std::string& typeName);
  explicit Record(AnyValue held) : value(std::move(held)) {}

  std::string typeName() const;

  /// A copy of a member, as toPython() makes it. Throws IndexError.
  py::object get(std::size_t index, py::handle outer = Py_None, py::handle inner = Py_None) const;
  /// Throws TypeError for what is no value of the member; a list or map may be half changed then.
  void set(std::size_t index, py::handle given);

  /// What the tool prints: the report of a package or descriptor, the members of other records.
  std::string report() const;
  /// As the tool writes it, on one line. No other thread may use the record meanwhile.
  std::string toJson() const;
  /// Throws FieldError, which calls the record by \p name unless that is empty.
  static Record fromJson(const std::string& typeName, const std::string& json,
                         const std::string& name);

  /// The variant form. Throws TypeError where the type has none.
  py::object toVariant() const;
  static Record fromVariant(const std::string& typeName, py::handle variant);

  /// PackageInfo::trimExtraInfo().
  void trimPackage();
  /// BehaviorInfo::trimExtraInfo().
  void trimBehavior(py::handle descriptionLanguages, py::handle supportedLanguages);

  AnyValue value;
};

/// The records that a package consists of, by what Python calls them, each with its members: a list of
/// pairs of the name for people and the type's name.
py::dict recordTypes();

void defineRecord(py::module_& module);

} // namespace vesk::python

#endif
