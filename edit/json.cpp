// SPDX-License-Identifier: Apache-2.0
#include <edit/json.hpp>

#include <nlohmann/json.hpp>

#include <variant>

namespace vesk::edit
{
namespace
{
using OrderedJson = nlohmann::ordered_json;

OrderedJson jsonOf(const AnyConstReference& value, MemberNaming naming);

/// Appends to an object without looking through it for the name, which is known to be new.
void append(OrderedJson& object, const std::string& name, OrderedJson value)
{
  using Members = std::vector<OrderedJson::object_t::value_type>;
  static_cast<Members&>(object.get_ref<OrderedJson::object_t&>())
      .emplace_back(name, std::move(value));
}

OrderedJson jsonOfStruct(const AnyConstReference& value, MemberNaming naming)
{
  OrderedJson object = OrderedJson::object();
  for (const std::string& name : value.memberNames())
  {
    append(object, naming == nullptr ? name : naming(*value.type(), name),
           jsonOf(value.member(name), naming));
  }
  return object;
}

OrderedJson jsonOfList(const AnyConstReference& value, MemberNaming naming)
{
  OrderedJson array = OrderedJson::array();
  for (const AnyConstReference& element : value.elements())
  {
    array.push_back(jsonOf(element, naming));
  }
  return array;
}

OrderedJson jsonOfMap(const AnyConstReference& value, MemberNaming naming)
{
  const auto* type = static_cast<const MapTypeInterface*>(value.type());
  const bool byName = type->keyType()->kind() == TypeKind::String;
  OrderedJson json = byName ? OrderedJson::object() : OrderedJson::array();
  for (const auto& [key, item] : value.entries())
  {
    if (byName)
    {
      append(json, key.as<std::string>(), jsonOf(item, naming));
    }
    else
    {
      json.push_back(OrderedJson::array({jsonOf(key, naming), jsonOf(item, naming)}));
    }
  }
  return json;
}

OrderedJson jsonOfNumber(const AnyConstReference& value)
{
  const auto* type = static_cast<const NumberTypeInterface*>(value.type());
  return std::visit([](auto number) { return OrderedJson(number); }, type->number(value.address()));
}

OrderedJson jsonOf(const AnyConstReference& value, MemberNaming naming)
{
  switch (value.isValid() ? value.type()->kind() : TypeKind::Unknown)
  {
  case TypeKind::Bool:
    return value.as<bool>();
  case TypeKind::Integer:
  case TypeKind::Float:
    return jsonOfNumber(value);
  case TypeKind::String:
    return value.as<std::string>();
  case TypeKind::List:
    return jsonOfList(value, naming);
  case TypeKind::Map:
    return jsonOfMap(value, naming);
  case TypeKind::Struct:
    return jsonOfStruct(value, naming);
  case TypeKind::Dynamic:
    return jsonOf(value.as<AnyValue>(), naming);
  case TypeKind::Unknown:
    break;
  }
  return nullptr;
}

/// Escapes the control characters that JSON leaves as they are, U+007F to U+009F: terminals act on
/// them.
std::string withEscapedControls(const std::string& json)
{
  std::string escaped;
  escaped.reserve(json.size());
  for (std::size_t i = 0; i < json.size(); ++i)
  {
    const bool isTwoBytes =
        json[i] == '\xC2' && i + 1 < json.size() && static_cast<unsigned char>(json[i + 1]) < 0xA0;
    if (!isTwoBytes && json[i] != '\x7F')
    {
      escaped += json[i];
      continue;
    }
    i += isTwoBytes ? 1 : 0;
    constexpr const char* digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(json[i]);
    escaped += std::string("\\u00") + digits[code / 16] + digits[code % 16];
  }
  return escaped;
}
} // namespace

std::string toJson(const AnyConstReference& value, int indentation, MemberNaming naming,
                   const std::vector<std::pair<std::string, AnyConstReference>>& furtherMembers)
{
  OrderedJson json = jsonOf(value, naming);
  for (const auto& [name, member] : furtherMembers)
  {
    append(json, name, jsonOf(member, naming));
  }
  return withEscapedControls(
      json.dump(indentation, ' ', false, OrderedJson::error_handler_t::replace));
}

} // namespace vesk::edit
