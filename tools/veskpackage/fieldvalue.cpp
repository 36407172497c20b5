// SPDX-License-Identifier: Apache-2.0
#include "fieldvalue.hpp"

#include "json.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

using vesk::AnyConstReference;
using vesk::AnyReference;
using vesk::AnyValue;
using vesk::TypeKind;

namespace
{
using Json = nlohmann::ordered_json; // members are set in the order in which they are written

[[noreturn]] void fail(const FieldPath& path, const std::string& why)
{
  throw FieldError((path.empty() ? "the package" : toText(path)) + ": " + why);
}

/// Where the first steps of a path lead, for messages.
std::string placeAt(const FieldPath& path, std::size_t depth)
{
  const auto end = path.begin() + static_cast<std::ptrdiff_t>(depth);
  return depth == 0 ? "the package" : toText(FieldPath(path.begin(), end));
}

std::string kindName(const AnyConstReference& value)
{
  if (!value.isValid())
  {
    return "empty";
  }
  switch (value.type()->kind())
  {
  case TypeKind::Bool:
    return "a bool";
  case TypeKind::Integer:
  case TypeKind::Float:
    return "a number";
  case TypeKind::String:
    return "a text";
  case TypeKind::List:
    return "a list";
  case TypeKind::Map:
    return "a map";
  case TypeKind::Struct:
    return "a struct";
  case TypeKind::Dynamic:
  case TypeKind::Unknown:
    break;
  }
  return "a " + value.type()->name();
}

template <typename Interface>
const Interface& typeOfPart(const AnyConstReference& value)
{
  return *static_cast<const Interface*>(value.type());
}

/// What an AnyValue holds, nothing when it is empty; any other value itself.
template <typename View>
View lookThrough(View value)
{
  while (value.template is<AnyValue>())
  {
    value = value.template as<AnyValue>().reference();
  }
  return value;
}

/// Whether one may have been mistyped for the other: but for a character or two in one place, and
/// less than half of them, they are the same.
bool areAlike(const std::string& left, const std::string& right)
{
  const auto& [shorter, longer] =
      std::minmax(left, right, [](const auto& a, const auto& b) { return a.size() < b.size(); });
  const auto head = std::mismatch(shorter.begin(), shorter.end(), longer.begin()).first;
  const auto tail =
      std::mismatch(shorter.rbegin(), std::make_reverse_iterator(head), longer.rbegin()).second;
  const auto differing = (longer.rend() - tail) - (head - shorter.begin());
  return differing <= 2 && static_cast<std::size_t>(differing) * 2 < longer.size();
}

/// Lists what could have been written instead of a name.
std::string choice(const std::vector<std::string>& names, const std::string& instead)
{
  constexpr std::size_t most = 30;
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
  {
    text += (i == 0 ? "" : ", ") + toText({names[i]});
  }
  if (names.size() > most)
  {
    text += " and " + std::to_string(names.size() - most) + " more";
  }
  const auto alike =
      std::find_if(names.begin(), names.end(),
                   [&instead](const std::string& name) { return areAlike(name, instead); });
  return alike == names.end() ? text : text + " (did you mean " + toText({*alike}) + "?)";
}

/// The member of a struct that the step at a depth names.
std::size_t memberIndex(const vesk::StructTypeInterface& type, const FieldPath& path,
                        std::size_t depth)
{
  const auto& name = std::get<std::string>(path[depth]);
  if (const std::optional<std::size_t> index = type.memberIndex(name))
  {
    return *index;
  }
  std::vector<std::string> names;
  for (const std::string& memberName : type.memberNames())
  {
    names.push_back(friendlyName(memberName));
  }
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end())
  {
    fail(path,
         placeAt(path, depth) + " has no member \"" + name + "\"; it has " + choice(names, name));
  }
  return static_cast<std::size_t>(found - names.begin());
}

bool isNumber(const vesk::TypeInterface& type)
{
  return type.kind() == TypeKind::Integer || type.kind() == TypeKind::Float;
}

/// What sets a value of a type.
std::string expected(const vesk::TypeInterface& type)
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

AnyValue fromText(const vesk::TypeInterface& type, const std::string& text, FieldPath path);
void fill(const AnyReference& target, const Json& json, FieldPath& path);

bool fillNumber(const AnyReference& target, const Json& json)
{
  const auto& type = typeOfPart<vesk::NumberTypeInterface>(target);
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
  const auto& type = typeOfPart<vesk::ListTypeInterface>(list);
  type.clear(list.address());
  for (const Json& element : json)
  {
    path.emplace_back(type.size(list.address()));
    fill(AnyReference(*type.elementType(), type.append(list.address())), element, path);
    path.pop_back();
  }
}

void fillMap(const AnyReference& map, const Json& json, FieldPath& path)
{
  const auto& type = typeOfPart<vesk::MapTypeInterface>(map);
  type.clear(map.address());
  for (const auto& [name, item] : json.items())
  {
    path.emplace_back(name);
    const AnyValue key = fromText(*type.keyType(), name, path);
    fill(AnyReference(*type.valueType(), type.insert(map.address(), key.reference().address())),
         item, path);
    path.pop_back();
  }
}

void fillStruct(const AnyReference& value, const Json& json, FieldPath& path)
{
  for (const auto& [name, item] : json.items())
  {
    path.emplace_back(name);
    const std::size_t index =
        memberIndex(typeOfPart<vesk::StructTypeInterface>(value), path, path.size() - 1);
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
    fail(path, "takes " + expected(*target.type()) + ", not " + given);
  }
}

Json parseJson(const vesk::TypeInterface& type, const std::string& text, const FieldPath& path)
{
  try
  {
    return Json::parse(text);
  }
  catch (const Json::exception& error)
  {
    const bool plain = type.kind() == TypeKind::Bool || isNumber(type);
    const std::string what = error.what();
    fail(path, "takes " + expected(type) +
                   (plain ? ", not " + text : ": " + what.substr(what.find("] ") + 2)));
  }
}

AnyValue fromText(const vesk::TypeInterface& type, const std::string& text, FieldPath path)
{
  if (type.kind() == TypeKind::String)
  {
    return text;
  }
  if (type.kind() == TypeKind::Unknown)
  {
    fail(path, "takes " + expected(type));
  }
  AnyValue value(type);
  fill(value, parseJson(type, text, path), path);
  return value;
}

/// The part to which the step at a depth leads; nothing when it is an element or an entry that is
/// not there.
template <typename View>
View partOf(const View& whole, const FieldPath& path, std::size_t depth)
{
  const View value = lookThrough(whole);
  const auto* name = std::get_if<std::string>(&path[depth]);
  const auto* index = std::get_if<std::size_t>(&path[depth]);
  const TypeKind kind = value.isValid() ? value.type()->kind() : TypeKind::Unknown;
  if (kind == TypeKind::Struct && name != nullptr)
  {
    return value.member(memberIndex(typeOfPart<vesk::StructTypeInterface>(value), path, depth));
  }
  if (kind == TypeKind::Map && name != nullptr)
  {
    const auto& type = typeOfPart<vesk::MapTypeInterface>(value);
    return value.find(fromText(*type.keyType(), *name, path));
  }
  if (kind == TypeKind::List && index != nullptr)
  {
    return *index < value.size() ? value.element(*index) : View();
  }
  const std::string place = placeAt(path, depth);
  fail(path, place + " is " + kindName(value) + " and has no " +
                 (name != nullptr ? "members" : "elements") +
                 (kind == TypeKind::List ? ", but elements, as in " + place + "[0]" : ""));
}

[[noreturn]] void failMissing(const AnyConstReference& whole, const FieldPath& path,
                              std::size_t depth)
{
  const AnyConstReference value = lookThrough(whole);
  if (std::holds_alternative<std::size_t>(path[depth]))
  {
    const std::size_t size = value.size();
    fail(path, "there is no " + placeAt(path, depth + 1) + ": the list has " +
                   std::to_string(size) + (size == 1 ? " element" : " elements"));
  }
  std::vector<std::string> keys;
  for (const auto& entry : value.entries())
  {
    keys.push_back(keyName(entry.first));
  }
  const auto& name = std::get<std::string>(path[depth]);
  fail(path, placeAt(path, depth) + " has no entry \"" + name + "\"; " +
                 (keys.empty() ? "it is empty" : "it has " + choice(keys, name)));
}

void setPart(const AnyReference& whole, const FieldPath& path, std::size_t depth,
             const std::string& text);

/// Adds the part to which the step at a depth leads. It is complete before, so that nothing has
/// changed when there is an error in it.
void addPart(const AnyReference& whole, const FieldPath& path, std::size_t depth,
             const std::string& text)
{
  if (const auto* index = std::get_if<std::size_t>(&path[depth]))
  {
    if (*index != whole.size())
    {
      failMissing(whole, path, depth);
    }
    const auto& type = typeOfPart<vesk::ListTypeInterface>(whole);
    AnyValue element(*type.elementType());
    setPart(element, path, depth + 1, text);
    type.appendCopy(whole.address(), element.reference().address());
  }
  else
  {
    const auto& type = typeOfPart<vesk::MapTypeInterface>(whole);
    AnyValue item(*type.valueType());
    setPart(item, path, depth + 1, text);
    const AnyValue key = fromText(*type.keyType(), std::get<std::string>(path[depth]), path);
    type.valueType()->assign(type.insert(whole.address(), key.reference().address()),
                             item.reference().address());
  }
}

void setPart(const AnyReference& whole, const FieldPath& path, std::size_t depth,
             const std::string& text)
{
  const AnyReference held = lookThrough(whole);
  if (depth == path.size())
  {
    if (!held.isValid())
    {
      fail(path, "is empty and takes no value");
    }
    held.set(fromText(*held.type(), text, path));
    return;
  }
  const AnyReference part = partOf(held, path, depth);
  if (part.isValid())
  {
    setPart(part, path, depth + 1, text);
  }
  else
  {
    addPart(held, path, depth, text);
  }
}
} // namespace

std::string keyName(const AnyConstReference& key)
{
  return key.is<std::string>() ? key.as<std::string>() : toJson(key, -1);
}

AnyConstReference valueAt(const AnyConstReference& root, const FieldPath& path)
{
  AnyConstReference value = root;
  for (std::size_t depth = 0; depth < path.size(); ++depth)
  {
    const AnyConstReference part = partOf(value, path, depth);
    if (!part.isValid())
    {
      failMissing(value, path, depth);
    }
    value = part;
  }
  return value;
}

void setAt(const AnyReference& root, const FieldPath& path, const std::string& text)
{
  setPart(root, path, 0, text);
}
