// SPDX-License-Identifier: Apache-2.0
#include "record.hpp"

#include "unlocked.hpp"
#include "values.hpp"

#include <edit/json.hpp>
#include <edit/manifest.hpp>
#include <edit/membername.hpp>
#include <edit/valuefromtext.hpp>
#include <package/behaviorinfo.hpp>
#include <package/dialoginfo.hpp>
#include <package/languageinfo.hpp>
#include <package/manifest2/webinfo.hpp>
#include <package/packageinfo.hpp>
#include <vesk/typesystem.hpp>
#include <xovalue/xovalue.hpp>

#include <list>
#include <pybind11/stl.h>
#include <sstream>
#include <type_traits>
#include <utility>

namespace vesk::python
{
namespace
{
struct NamedType
{
  const char* name;
  const TypeInterface* type;
};

const std::vector<NamedType>& namedTypes()
{
  static const std::vector<NamedType> types{
      {"Package", typeOf<edit::Manifest>()},
      {"Behavior", typeOf<BehaviorInfo>()},
      {"Dialog", typeOf<DialogInfo>()},
      {"LanguagePack", typeOf<LanguageInfo>()},
      {"Service", typeOf<PackageService>()},
      {"RobotRequirement", typeOf<RobotRequirement>()},
      {"MirelRequirement", typeOf<MirelRequirement>()},
      {"WebContent", typeOf<WebInfo>()},
  };
  return types;
}

const TypeInterface& typeNamed(const std::string& name)
{
  for (const NamedType& named : namedTypes())
  {
    if (named.name == name)
    {
      return *named.type;
    }
  }
  throw py::value_error("no type of records: " + name);
}

/// Calls \p use with the handle whose operations Python's record has, a package for a whole manifest.
/// False where the record is none of these.
template <typename Value, typename Use>
bool withHandle(Value& value, Use use)
{
  const auto tried = [&](auto of)
  {
    using Handle = typename decltype(of)::type;
    const bool isIt = value.template is<Handle>();
    if (isIt)
    {
      use(value.template as<Handle>());
    }
    return isIt;
  };
  if (value.template is<edit::Manifest>())
  {
    use(value.template as<edit::Manifest>().package);
    return true;
  }
  return tried(std::common_type<BehaviorInfo>()) || tried(std::common_type<DialogInfo>()) ||
         tried(std::common_type<LanguageInfo>());
}

std::string kindOf(const TypeInterface& type)
{
  switch (type.kind())
  {
  case TypeKind::Bool:
    return "bool";
  case TypeKind::String:
    return "str";
  case TypeKind::List:
    return "list[" + kindOf(*static_cast<const ListTypeInterface&>(type).elementType()) + ']';
  case TypeKind::Map:
    return "dict[str, " + kindOf(*static_cast<const MapTypeInterface&>(type).valueType()) + ']';
  case TypeKind::Dynamic:
    return "WebContent | None";
  default:
    for (const NamedType& named : namedTypes())
    {
      if (named.type == &type)
      {
        return named.name;
      }
    }
    return type.name();
  }
}
} // namespace

Record::Record(const std::string& typeName) : value(typeNamed(typeName)) {}

std::string Record::typeName() const { return kindOf(*value.type()); }

py::object Record::get(std::size_t index, py::handle outer, py::handle inner) const
{
  return toPython(value.member(index), outer, inner);
}

void Record::set(std::size_t index, py::handle given) { fromPython(value.member(index), given); }

std::string Record::report() const
{
  std::ostringstream out;
  if (value.is<edit::Manifest>())
  {
    out << value.as<edit::Manifest>();
  }
  else if (!withHandle(value, [&out](const auto& handle) { out << handle; }))
  {
    out << value.reference();
  }
  return out.str();
}

std::string Record::toJson() const
{
  return unlocked([this] { return edit::toJson(value.reference(), -1, edit::friendlyName); });
}

Record Record::fromJson(const std::string& typeName, const std::string& json,
                        const std::string& name)
{
  const edit::FieldPath place = name.empty() ? edit::FieldPath() : edit::FieldPath{name};
  const TypeInterface& type = typeNamed(typeName);
  return Record(unlocked([&] { return edit::valueFromText(type, json, place); }));
}

py::object Record::toVariant() const
{
  XO::XOValue variant;
  const auto convert = [&variant](const auto& handle)
  {
    using Handle = std::decay_t<decltype(handle)>;
    if constexpr (std::is_same_v<Handle, DialogInfo>)
    {
      variant = handle.toXOValue();
    }
    else
    {
      Handle(handle).toXOValue(variant); // a package's own operation is not const
    }
  };
  if (!withHandle(value, convert))
  {
    throw py::type_error(typeName() + " has no variant form of its own");
  }
  return toPython(variant);
}

Record Record::fromVariant(const std::string& typeName, py::handle variant)
{
  Record record(typeName);
  const XO::XOValue read = variantFrom(variant);
  const auto convert = [&read](auto& handle)
  {
    using Handle = std::decay_t<decltype(handle)>;
    handle = Handle(read);
  };
  if (!withHandle(record.value, convert))
  {
    throw py::type_error(typeName + " has no variant form of its own");
  }
  return record;
}

void Record::trimPackage() { value.as<edit::Manifest>().package.trimExtraInfo(); }

void Record::trimBehavior(py::handle descriptionLanguages, py::handle supportedLanguages)
{
  std::list<std::string> described;
  std::list<std::string> supported;
  fromPython(AnyReference(described), descriptionLanguages);
  fromPython(AnyReference(supported), supportedLanguages);
  value.as<BehaviorInfo>().trimExtraInfo(std::move(described), std::move(supported));
}

py::dict recordTypes()
{
  py::dict types;
  for (const NamedType& named : namedTypes())
  {
    const auto& type = *static_cast<const StructTypeInterface*>(named.type);
    py::list members;
    for (std::size_t i = 0; i < type.memberNames().size(); ++i)
    {
      members.append(py::make_tuple(edit::friendlyName(type, type.memberNames()[i]),
                                    kindOf(*type.memberTypes()[i])));
    }
    types[named.name] = members;
  }
  return types;
}

void defineRecord(py::module_& module)
{
  py::class_<Record>(module, "Record")
      .def(py::init<const std::string&>(), py::arg("type_name"))
      .def("get", &Record::get, py::arg("index"), py::arg("outer") = py::none(),
           py::arg("inner") = py::none())
      .def("set", &Record::set, py::arg("index"), py::arg("value"))
      .def("copy", [](const Record& record) { return Record(record.value); })
      .def("__eq__",
           [](const Record& left, const Record& right) { return left.value == right.value; })
      .def("report", [](const Record& record) { return toText(record.report()); })
      .def("to_json", [](const Record& record) { return toText(record.toJson()); })
      .def_static("from_json", &Record::fromJson, py::arg("type_name"), py::arg("json"),
                  py::arg("name"))
      .def("to_variant", &Record::toVariant)
      .def_static("from_variant", &Record::fromVariant, py::arg("type_name"), py::arg("variant"))
      .def("trim_package", &Record::trimPackage)
      .def("trim_behavior", &Record::trimBehavior, py::arg("description_languages"),
           py::arg("supported_languages"));
  module.def("record_types", &recordTypes);
  module.def("supported_permissions",
             [] { return py::cast(BehaviorInfo::supportedPermissions()); });
}

} // namespace vesk::python
