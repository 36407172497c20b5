// SPDX-License-Identifier: Apache-2.0
#include "printing.hpp"

#include <vesk/anyvalue.hpp>
#include <vesk/conversion.hpp>

#include <map>
#include <string_view>

namespace vesk
{
namespace
{
/// Where a conversion is at, from the outermost value inwards. Every failure is said here.
class Place
{
public:
  Place(const AnyConstReference& source, const AnyConstReference& target)
      : outermostSource(&source), outermostTarget(&target)
  {}
  Place(const Place& outer, const std::string& member)
      : parent(&outer), name(&member), depth(outer.depth + 1)
  {}
  Place(const Place& outer, std::size_t element)
      : parent(&outer), index(element), depth(outer.depth + 1)
  {}

  bool isTooDeep() const { return depth > detail::deepestNesting; }

  [[noreturn]] void fail(const std::string& reason) const
  {
    const Place* root = this;
    while (root->parent != nullptr)
    {
      root = root->parent;
    }
    const std::string steps = path();
    throw ConversionError("cannot convert " + root->outermostSource->typeName() + " to " +
                          root->outermostTarget->typeName() + ": " + steps +
                          (steps.empty() ? "" : ": ") + reason);
  }

  /// Copies values by \p copy, which fails when they hold values nested too deep.
  template <typename Copy>
  void copying(const Copy& copy) const
  {
    try
    {
      copy();
    }
    catch (const ConversionError& error)
    {
      fail(error.what());
    }
  }

private:
  std::string path() const
  {
    std::string steps;
    for (const Place* place = this; place->parent != nullptr; place = place->parent)
    {
      const bool isOutermost = place->parent->parent == nullptr;
      steps.insert(0, place->name == nullptr ? '[' + std::to_string(place->index) + ']'
                                             : (isOutermost ? "" : ".") + *place->name);
    }
    return steps;
  }

  const AnyConstReference* outermostSource = nullptr;
  const AnyConstReference* outermostTarget = nullptr;
  const Place* parent = nullptr;
  const std::string* name = nullptr;
  std::size_t index = 0;
  int depth = 0;
};

std::string quoted(const std::vector<std::string>& names)
{
  std::string text;
  for (const std::string& name : names)
  {
    text += (text.empty() ? "\"" : ", \"") + name + '"';
  }
  return text;
}

bool isNumber(const TypeInterface& type)
{
  return type.kind() == TypeKind::Integer || type.kind() == TypeKind::Float;
}

bool isMapOfNames(const TypeInterface& type)
{
  return type.kind() == TypeKind::Map &&
         static_cast<const MapTypeInterface&>(type).keyType()->kind() == TypeKind::String;
}

void convertInto(const AnyReference& target, AnyConstReference source, const Place& place);

void convertNumber(const AnyReference& target, const AnyConstReference& source, const Place& place)
{
  const Number number =
      static_cast<const NumberTypeInterface&>(*source.type()).number(source.address());
  if (!static_cast<const NumberTypeInterface&>(*target.type()).setNumber(target.address(), number))
  {
    place.fail(detail::printed(number) + " does not fit into " + target.typeName());
  }
}

void convertList(const AnyReference& target, const AnyConstReference& source, const Place& place)
{
  const auto& type = static_cast<const ListTypeInterface&>(*target.type());
  const TypeInterface& elementType = *type.elementType();
  target.clear();
  std::size_t index = 0;
  for (const AnyConstReference& element : source.elements())
  {
    const Place here(place, index);
    if (isSameType(*element.type(), elementType))
    {
      here.copying([&] { type.insertCopy(target.address(), index, element.address()); });
    }
    else
    {
      convertInto(target.append(), element, here);
    }
    ++index;
  }
}

void convertMap(const AnyReference& target, const AnyConstReference& source, const Place& place)
{
  const auto& type = static_cast<const MapTypeInterface&>(*target.type());
  type.clear(target.address());
  std::size_t index = 0;
  for (const auto& [key, value] : source.entries())
  {
    const Place entry(place, index);
    AnyValue convertedKey(*type.keyType());
    convertInto(convertedKey, key, entry);
    if (target.find(convertedKey).isValid())
    {
      entry.fail("two keys become one");
    }
    void* const converted = type.insert(target.address(), convertedKey.reference().address());
    const AnyReference convertedValue(*type.valueType(), converted);
    if (key.is<std::string>())
    {
      convertInto(convertedValue, value, Place(place, key.as<std::string>()));
    }
    else
    {
      convertInto(convertedValue, value, entry);
    }
    ++index;
  }
}

/// The members of a struct, or the entries of a map with names for keys.
std::map<std::string_view, AnyConstReference> fieldsOf(const AnyConstReference& structOrMap)
{
  std::map<std::string_view, AnyConstReference> fields;
  if (structOrMap.type()->kind() == TypeKind::Map)
  {
    for (const auto& [key, value] : structOrMap.entries())
    {
      fields.emplace(key.as<std::string>(), value);
    }
    return fields;
  }
  std::size_t index = 0;
  for (const std::string& name : structOrMap.memberNames())
  {
    fields.emplace(name, structOrMap.member(index++));
  }
  return fields;
}

std::string described(const MemberDifference& difference)
{
  return (difference.missing.empty() ? "" : "without " + quoted(difference.missing)) +
         (difference.missing.empty() || difference.surplus.empty() ? "" : " and ") +
         (difference.surplus.empty() ? "" : "with a surplus " + quoted(difference.surplus));
}

/// Asks the target's type, then the source's, whether to convert although their members differ; the
/// target's type also sets the members that the source lacks. False when both refuse.
bool settleDifference(const MemberDifference& ours, const StructTypeInterface& targetType,
                      void* target, const TypeInterface& sourceType)
{
  if (targetType.convertFrom(target, ours))
  {
    return true;
  }
  const MemberDifference theirs{ours.surplus, ours.missing};
  return sourceType.kind() == TypeKind::Struct &&
         static_cast<const StructTypeInterface&>(sourceType).convertTo(theirs);
}

/// From a struct or a map with names for keys.
void convertToStruct(const AnyReference& target, const AnyConstReference& source,
                     const Place& place)
{
  const auto& type = static_cast<const StructTypeInterface&>(*target.type());
  std::map<std::string_view, AnyConstReference> surplus = fieldsOf(source);
  std::vector<AnyConstReference> fields; // in the order of the members; nothing for a missing one
  MemberDifference ours;
  for (const std::string& name : type.memberNames())
  {
    const auto field = surplus.find(name);
    if (field == surplus.end())
    {
      ours.missing.push_back(name);
      fields.emplace_back();
    }
    else
    {
      fields.push_back(field->second);
      surplus.erase(field);
    }
  }
  for (const auto& [name, value] : surplus)
  {
    ours.surplus.emplace_back(name);
  }
  if ((!ours.missing.empty() || !ours.surplus.empty()) &&
      !settleDifference(ours, type, target.address(), *source.type()))
  {
    place.fail(described(ours));
  }
  for (std::size_t index = 0; index < fields.size(); ++index)
  {
    if (fields[index].isValid())
    {
      convertInto(target.member(index), fields[index], Place(place, type.memberNames()[index]));
    }
  }
}

void convertStructToMap(const AnyReference& target, const AnyConstReference& source,
                        const Place& place)
{
  const auto& type = static_cast<const MapTypeInterface&>(*target.type());
  type.clear(target.address());
  for (const std::string& name : source.memberNames())
  {
    convertInto(AnyReference(*type.valueType(), type.insert(target.address(), &name)),
                source.member(name), Place(place, name));
  }
}

/// What an AnyValue holds, or an AnyValue in it; any other value itself.
AnyConstReference held(AnyConstReference source)
{
  while (source.isValid() && source.type()->kind() == TypeKind::Dynamic)
  {
    source = source.as<AnyValue>();
  }
  return source;
}

void convertInto(const AnyReference& target, AnyConstReference source, const Place& place)
{
  const TypeInterface& to = *target.type();
  if (to.kind() != TypeKind::Dynamic)
  {
    source = held(source);
  }
  if (!source.isValid())
  {
    place.fail("there is no value");
  }
  if (place.isTooDeep())
  {
    place.fail("nested more than " + std::to_string(detail::deepestNesting) + " deep");
  }
  const TypeInterface& from = *source.type();
  if (isSameType(from, to))
  {
    place.copying([&] { to.assign(target.address(), source.address()); });
  }
  else if (to.kind() == TypeKind::Dynamic)
  {
    place.copying([&] { target.as<AnyValue>() = AnyValue(source); });
  }
  else if (isNumber(from) && isNumber(to))
  {
    convertNumber(target, source, place);
  }
  else if (from.kind() == TypeKind::List && to.kind() == TypeKind::List)
  {
    convertList(target, source, place);
  }
  else if (from.kind() == TypeKind::Map && to.kind() == TypeKind::Map)
  {
    convertMap(target, source, place);
  }
  else if (to.kind() == TypeKind::Struct && (from.kind() == TypeKind::Struct || isMapOfNames(from)))
  {
    convertToStruct(target, source, place);
  }
  else if (from.kind() == TypeKind::Struct && isMapOfNames(to))
  {
    convertStructToMap(target, source, place);
  }
  else
  {
    place.fail(from.name() + " is no " + to.name());
  }
}
} // namespace

void detail::convertAfresh(const AnyConstReference& source, const AnyReference& target)
{
  convertInto(target, source, Place(source, target));
}

const void* detail::addressOfHeld(const AnyConstReference& source, const TypeInterface& wanted)
{
  const AnyConstReference value = held(source);
  if (!value.isValid() || !isSameType(*value.type(), wanted))
  {
    Place(source, {wanted, nullptr}).fail(value.typeName() + " is no " + wanted.name());
  }
  return value.address();
}

void convert(const AnyConstReference& source, const AnyReference& target)
{
  if (!target.isValid())
  {
    Place(source, target).fail("there is no value to replace");
  }
  const TypeInterface& type = *target.type();
  if (source.isValid() && isSameType(*source.type(), type))
  {
    type.assign(target.address(), source.address());
  }
  else if (type.kind() == TypeKind::Unknown) // it may have no default value
  {
    type.assign(target.address(), detail::addressOfHeld(source, type));
  }
  else
  {
    AnyValue converted(type);
    detail::convertAfresh(source, converted);
    type.assign(target.address(), converted.reference().address());
  }
}

} // namespace vesk
