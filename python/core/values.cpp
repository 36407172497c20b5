// SPDX-License-Identifier: Apache-2.0
#include "values.hpp"

#include "record.hpp"

#include <vesk/typeinterface.hpp>

namespace vesk::python
{
namespace
{
/// Ends endless or very deep lists by a RecursionError.
class Nesting
{
public:
  explicit Nesting(const char* where)
  {
    if (Py_EnterRecursiveCall(where) != 0)
    {
      throw py::error_already_set();
    }
  }
  ~Nesting() { Py_LeaveRecursiveCall(); }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;
};

[[noreturn]] void refuse(const char* wanted, py::handle given)
{
  throw py::type_error(std::string(wanted) + " is wanted, not " +
                       py::str(py::type::handle_of(given).attr("__name__")).cast<std::string>());
}

/// Made past the constructor of the class, which looks at every item.
template <typename Container>
Container emptyOf(PyTypeObject& base, py::handle type)
{
  auto* const wanted = type.is_none() ? &base : reinterpret_cast<PyTypeObject*>(type.ptr());
  PyObject* const made = base.tp_new(wanted, py::tuple().ptr(), nullptr);
  if (made == nullptr)
  {
    throw py::error_already_set();
  }
  return py::reinterpret_steal<Container>(made);
}

void fillList(const AnyReference& list, py::handle given)
{
  list.clear();
  for (const py::handle item : given)
  {
    fromPython(list.append(), item);
  }
}

void fillMap(const AnyReference& map, py::handle given)
{
  if (!py::isinstance<py::dict>(given))
  {
    refuse("a dict", given);
  }
  map.clear();
  const auto& type = *static_cast<const MapTypeInterface*>(map.type());
  for (const auto& [key, item] : py::reinterpret_borrow<py::dict>(given))
  {
    const std::string text = fromText(key);
    fromPython(AnyReference(*type.valueType(), type.insert(map.address(), &text)), item);
  }
}
} // namespace

py::str toText(std::string_view bytes)
{
  PyObject* const text =
      PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "replace");
  if (text == nullptr)
  {
    throw py::error_already_set();
  }
  return py::reinterpret_steal<py::str>(text);
}

std::string fromText(py::handle text)
{
  if (!PyUnicode_Check(text.ptr()))
  {
    refuse("a str", text);
  }
  Py_ssize_t size = 0;
  const char* const bytes = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
  if (bytes == nullptr)
  {
    throw py::error_already_set();
  }
  return {bytes, static_cast<std::size_t>(size)};
}

py::object toPython(const AnyConstReference& value, py::handle outer, py::handle inner)
{
  if (!value.isValid())
  {
    return py::none();
  }
  switch (value.type()->kind())
  {
  case TypeKind::Bool:
    return py::bool_(value.as<bool>());
  case TypeKind::String:
    return toText(value.as<std::string>());
  case TypeKind::List: {
    auto list = emptyOf<py::list>(PyList_Type, outer);
    for (const AnyConstReference& element : value.elements())
    {
      list.append(toPython(element, inner));
    }
    return list;
  }
  case TypeKind::Map: {
    auto map = emptyOf<py::dict>(PyDict_Type, outer);
    for (const auto& [key, item] : value.entries())
    {
      const py::str text = toText(key.as<std::string>());
      if (PyDict_SetItem(map.ptr(), text.ptr(), toPython(item, inner).ptr()) != 0)
      {
        throw py::error_already_set();
      }
    }
    return map;
  }
  case TypeKind::Struct:
    return py::cast(Record(AnyValue(value)));
  case TypeKind::Dynamic:
    return toPython(AnyConstReference(value.as<AnyValue>()));
  default:
    throw py::type_error("no value of Python's: " + value.typeName());
  }
}

void fromPython(const AnyReference& value, py::handle given)
{
  switch (value.type()->kind())
  {
  case TypeKind::Bool:
    if (!PyBool_Check(given.ptr()))
    {
      refuse("a bool", given);
    }
    value.as<bool>() = given.cast<bool>();
    break;
  case TypeKind::String:
    value.as<std::string>() = fromText(given);
    break;
  case TypeKind::List:
    fillList(value, given);
    break;
  case TypeKind::Map:
    fillMap(value, given);
    break;
  case TypeKind::Struct:
    value.set(given.cast<const Record&>().value);
    break;
  case TypeKind::Dynamic:
    value.as<AnyValue>() = given.is_none() ? AnyValue() : given.cast<const Record&>().value;
    break;
  default:
    throw py::type_error("no value of Python's: " + value.typeName());
  }
}

py::object toPython(const XO::XOValue& value)
{
  const Nesting nesting(" in a variant");
  if (value.isString())
  {
    return toText(value.toString());
  }
  if (value.isBool())
  {
    return py::bool_(value.toBool());
  }
  if (!value.isArray())
  {
    return py::none();
  }
  py::list list;
  for (const XO::XOValue& element : value)
  {
    list.append(toPython(element));
  }
  return list;
}

XO::XOValue variantFrom(py::handle given)
{
  const Nesting nesting(" in a variant");
  if (PyBool_Check(given.ptr()))
  {
    return given.cast<bool>();
  }
  if (PyUnicode_Check(given.ptr()))
  {
    return fromText(given);
  }
  if (!py::isinstance<py::list>(given) && !py::isinstance<py::tuple>(given))
  {
    return {};
  }
  const py::list list(py::reinterpret_borrow<py::object>(given));
  XO::XOValue array;
  array.arraySetSize(static_cast<int>(list.size()));
  for (int i = 0; i < array.getSize(); ++i)
  {
    array[i] = variantFrom(list[static_cast<std::size_t>(i)]);
  }
  return array;
}

} // namespace vesk::python
