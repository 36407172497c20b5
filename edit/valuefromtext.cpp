// SPDX-License-Identifier: Apache-2.0
#include <edit/failing.hpp>
#include <edit/fieldstep.hpp>
#include <edit/valuefromtext.hpp>

#include <nlohmann/json.hpp>

#include <set>
#include <string>
#include <vector>

namespace vesk::edit
{
namespace
{
using Json = nlohmann::json; // ordered_json would search all members to find one

bool isNumber(const TypeInterface& type)
{
  return type.kind() == TypeKind::Integer || type.kind() == TypeKind::Float;
}

/// Says what text a value of a type can be set to.
std::string expected(const TypeInterface& type)
{
  switch (type.kind())
  {
  case TypeKind::Bool:
    return "true or false";
  case TypeKind::Integer:
  case TypeKind::Float:
    return "a number of type " + type.name();
  case TypeKind::String:
    return "a JSON string";
  case TypeKind::List:
    return "a JSON array";
  case TypeKind::Map:
  case TypeKind::Struct:
    return "a JSON object";
  case TypeKind::Dynamic:
  case TypeKind::Unknown:
    break;
  }
  return "no value";
}

void fill(const AnyReference& target, const Json& json, FieldPath& path);

bool fillNumber(const AnyReference& target, const Json& json)
{
  const auto& type = describedAs<NumberTypeInterface>(target);
  if (json.is_number_unsigned())
  {
    return type.setNumber(target.address(), json.get<std::uint64_t>());
  }
  if (json.is_number_integer())
  {
    return type.setNumber(target.address(), json.get<std::int64_t>());
  }
  return json.is_number() && type.setNumber(target.address(), json.get<double>());
}

void fillList(const AnyReference& list, const Json& json, FieldPath& path)
{
  list.clear();
  for (const Json& element : json)
  {
    path.emplace_back(list.size());
    fill(list.append(), element, path);
    path.pop_back();
  }
}

void fillMap(const AnyReference& map, const Json& json, FieldPath& path)
{
  const auto& type = describedAs<MapTypeInterface>(map);
  map.clear();
  for (const auto& [name, item] : json.items())
  {
    path.emplace_back(name);
    AnyValue value(*type.valueType());
    fill(value, item, path);
    map.insert(valueFromText(*type.keyType(), name, path), value);
    path.pop_back();
  }
}

void fillStruct(const AnyReference& value, const Json& json, FieldPath& path)
{
  std::set<std::size_t> seen;
  for (const auto& [name, item] : json.items())
  {
    path.emplace_back(name);
    const std::size_t index =
        memberIndex(describedAs<StructTypeInterface>(value), path, path.size() - 1);
    if (!seen.insert(index).second) // under both of its names
    {
      failAt(path, "stands twice");
    }
    fill(value.member(index), item, path);
    path.pop_back();
  }
}

/// Makes a default value what the JSON says; \p path leads to it.
void fill(const AnyReference& target, const Json& json, FieldPath& path)
{
  const TypeKind kind = target.type()->kind();
  if (kind == TypeKind::Bool && json.is_boolean())
  {
    target.set(json.get<bool>());
  }
  else if (kind == TypeKind::String && json.is_string())
  {
    target.set(json.get<std::string>());
  }
  else if (kind == TypeKind::List && json.is_array())
  {
    fillList(target, json, path);
  }
  else if (kind == TypeKind::Map && json.is_object())
  {
    fillMap(target, json, path);
  }
  else if (kind == TypeKind::Struct && json.is_object())
  {
    fillStruct(target, json, path);
  }
  else if (!isNumber(*target.type()) || !fillNumber(target, json))
  {
    const std::string given =
        json.is_structured() ? std::string("an ") + json.type_name() : json.dump();
    failAt(path, "takes " + expected(*target.type()) + ", not " + given);
  }
}

/// Fails where a name stands twice in an object, of which the parser would take the last.
class NamesOnce
{
public:
  explicit NamesOnce(const FieldPath& place) : path(place) {}

  bool operator()(int /*depth*/, Json::parse_event_t event, const Json& parsed)
  {
    if (event == Json::parse_event_t::object_start)
    {
      names.emplace_back();
    }
    else if (event == Json::parse_event_t::object_end)
    {
      names.pop_back();
    }
    else if (event == Json::parse_event_t::key && !names.back().insert(parsed).second)
    {
      failAt(path, parsed.dump() + " stands twice in an object");
    }
    return true;
  }

private:
  const FieldPath& path;
  std::vector<std::set<std::string>> names; ///< of each object that is open
};

Json parseJson(const TypeInterface& type, const std::string& text, const FieldPath& path)
{
  try
  {
    return Json::parse(text, NamesOnce(path));
  }
  catch (const Json::exception& error)
  {
    // The parser's words are no help where an array or object was not meant, or is not wanted.
    const bool isPlain = type.kind() == TypeKind::Bool || isNumber(type);
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    const bool isStructured =
        !isPlain && begin != std::string::npos && (text[begin] == '[' || text[begin] == '{');
    const std::string what = error.what();
    failAt(path,
           "takes " + expected(type) +
               (isStructured ? ": " + what.substr(what.find("] ") + 2) : ", not \"" + text + '"'));
  }
}
} // namespace

AnyValue valueFromText(const TypeInterface& type, const std::string& text, FieldPath path)
{
  if (type.kind() == TypeKind::String)
  {
    return text;
  }
  if (type.kind() == TypeKind::Unknown)
  {
    failAt(path, "takes " + expected(type));
  }
  AnyValue value(type);
  fill(value, parseJson(type, text, path), path);
  return value;
}

} // namespace vesk::edit
