// SPDX-License-Identifier: Apache-2.0
#include "json.hpp"

#include <nlohmann/json.hpp>
#include <variant>

namespace
{
using Json = nlohmann::ordered_json;

Json jsonOf(const vesk::AnyConstReference& value);

/// Appends to an object without looking through it for the name, which is known to be new.
void append(Json& object, const std::string& name, Json value)
{
  using Members = std::vector<Json::object_t::value_type>;
  static_cast<Members&>(object.get_ref<Json::object_t&>()).emplace_back(name, std::move(value));
}

Json jsonOfStruct(const vesk::AnyConstReference& value)
{
  Json object = Json::object();
  for (const std::string& name : value.memberNames())
  {
    append(object, name, jsonOf(value.member(name)));
  }
  return object;
}

Json jsonOfList(const vesk::AnyConstReference& value)
{
  Json array = Json::array();
  for (const vesk::AnyConstReference& element : value.elements())
  {
    array.push_back(jsonOf(element));
  }
  return array;
}

Json jsonOfMap(const vesk::AnyConstReference& value)
{
  const auto* type = static_cast<const vesk::MapTypeInterface*>(value.type());
  const bool byName = type->keyType()->kind() == vesk::TypeKind::String;
  Json json = byName ? Json::object() : Json::array();
  for (const auto& [key, item] : value.entries())
  {
    if (byName)
    {
      append(json, key.as<std::string>(), jsonOf(item));
    }
    else
    {
      json.push_back(Json::array({jsonOf(key), jsonOf(item)}));
    }
  }
  return json;
}

Json jsonOfNumber(const vesk::AnyConstReference& value)
{
  const auto* type = static_cast<const vesk::NumberTypeInterface*>(value.type());
  return std::visit([](auto number) { return Json(number); }, type->number(value.address()));
}

Json jsonOf(const vesk::AnyConstReference& value)
{
  switch (value.isValid() ? value.type()->kind() : vesk::TypeKind::Unknown)
  {
  case vesk::TypeKind::Bool:
    return value.as<bool>();
  case vesk::TypeKind::Integer:
  case vesk::TypeKind::Float:
    return jsonOfNumber(value);
  case vesk::TypeKind::String:
    return value.as<std::string>();
  case vesk::TypeKind::List:
    return jsonOfList(value);
  case vesk::TypeKind::Map:
    return jsonOfMap(value);
  case vesk::TypeKind::Struct:
    return jsonOfStruct(value);
  case vesk::TypeKind::Dynamic:
    return jsonOf(value.as<vesk::AnyValue>());
  case vesk::TypeKind::Unknown:
    break;
  }
  return nullptr;
}
} // namespace

std::string
toJson(const vesk::AnyConstReference& value, int indentation,
       const std::vector<std::pair<std::string, vesk::AnyConstReference>>& furtherMembers)
{
  Json json = jsonOf(value);
  for (const auto& [name, member] : furtherMembers)
  {
    append(json, name, jsonOf(member));
  }
  return json.dump(indentation, ' ', false, Json::error_handler_t::replace);
}
