// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyvalue.hpp>

#include <algorithm>

namespace vesk
{
namespace
{
/// Where a conversion is at, from the outermost value inwards.
class Place
{
public:
  Place(const TypeInterface& source, const TypeInterface& target)
      : sourceType(&source), targetType(&target)
  {}
  Place(const Place& outer, const std::string& member) : parent(&outer), name(&member) {}
  Place(const Place& outer, std::size_t element) : parent(&outer), index(element) {}

  [[noreturn]] void fail(const std::string& reason) const
  {
    const Place* root = this;
    while (root->parent != nullptr)
    {
      root = root->parent;
    }
    const std::string steps = path();
    throw ConversionError("cannot convert " + root->sourceType->name() + " to " +
                          root->targetType->name() + ": " + steps + (steps.empty() ? "" : ": ") +
                          reason);
  }

private:
  std::string path() const
  {
    if (parent == nullptr)
    {
      return {};
    }
    const std::string outer = parent->path();
    if (name == nullptr)
    {
      return outer + '[' + std::to_string(index) + ']';
    }
    return outer + (outer.empty() ? "" : ".") + *name;
  }

  const TypeInterface* sourceType = nullptr;
  const TypeInterface* targetType = nullptr;
  const Place* parent = nullptr;
  const std::string* name = nullptr;
  std::size_t index = 0;
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

std::vector<std::string> without(const std::vector<std::string>& names,
                                 const std::vector<std::string>& others)
{
  std::vector<std::string> rest;
  std::copy_if(names.begin(), names.end(), std::back_inserter(rest), [&others](const auto& name)
               { return std::find(others.begin(), others.end(), name) == others.end(); });
  return rest;
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

void convertInto(const AnyReference& target, const AnyConstReference& source, const Place& place);

void convertNumber(const AnyReference& target, const AnyConstReference& source, const Place& place)
{
  const Number number =
      static_cast<const NumberTypeInterface&>(*source.type()).number(source.address());
  if (!static_cast<const NumberTypeInterface&>(*target.type()).setNumber(target.address(), number))
  {
    place.fail(std::visit([](auto value) { return std::to_string(value); }, number) +
               " does not fit into " + target.type()->name());
  }
}

void convertList(const AnyReference& target, const AnyConstReference& source, const Place& place)
{
  const auto& type = static_cast<const ListTypeInterface&>(*target.type());
  const TypeInterface& elementType = *type.elementType();
  type.clear(target.address());
  std::size_t index = 0;
  for (const AnyConstReference& element : source.elements())
  {
    if (isSameType(*element.type(), elementType))
    {
      type.appendCopy(target.address(), element.address());
    }
    else
    {
      convertInto(AnyReference(elementType, type.append(target.address())), element,
                  Place(place, index));
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

std::vector<std::string> namesIn(const AnyConstReference& structOrMap)
{
  if (structOrMap.type()->kind() == TypeKind::Struct)
  {
    return structOrMap.memberNames();
  }
  std::vector<std::string> names;
  for (const auto& [key, value] : structOrMap.entries())
  {
    names.push_back(key.as<std::string>());
  }
  return names;
}

/// From a struct or a map with names for keys.
void convertToStruct(const AnyReference& target, const AnyConstReference& source,
                     const Place& place)
{
  const auto& type = static_cast<const StructTypeInterface&>(*target.type());
  const std::vector<std::string>& names = type.memberNames();
  const std::vector<std::string> peerNames = namesIn(source);
  const bool fromStruct = source.type()->kind() == TypeKind::Struct;

  const MemberDifference ours{without(names, peerNames), without(peerNames, names)};
  if (!ours.missing.empty() || !ours.surplus.empty())
  {
    const MemberDifference theirs{ours.surplus, ours.missing};
    const bool accepted =
        type.convertFrom(target.address(), ours) ||
        (fromStruct &&
         static_cast<const StructTypeInterface&>(*source.type()).convertTo(theirs));
    if (!accepted)
    {
      place.fail((ours.missing.empty() ? "" : "without " + quoted(ours.missing)) +
                 (ours.missing.empty() || ours.surplus.empty() ? "" : " and ") +
                 (ours.surplus.empty() ? "" : "with a surplus " + quoted(ours.surplus)));
    }
  }
  for (const std::string& name : names)
  {
    if (std::find(peerNames.begin(), peerNames.end(), name) != peerNames.end())
    {
      convertInto(target.member(name), fromStruct ? source.member(name) : source.find(name),
                  Place(place, name));
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

void convertInto(const AnyReference& target, const AnyConstReference& source, const Place& place)
{
  const TypeInterface& to = *target.type();
  if (!source.isValid())
  {
    place.fail("there is no value");
  }
  const TypeInterface& from = *source.type();
  if (isSameType(from, to))
  {
    to.assign(target.address(), source.address());
  }
  else if (from.kind() == TypeKind::Dynamic)
  {
    convertInto(target, source.as<AnyValue>(), place);
  }
  else if (to.kind() == TypeKind::Dynamic)
  {
    target.as<AnyValue>() = AnyValue(source);
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
  else if (to.kind() == TypeKind::Struct &&
           (from.kind() == TypeKind::Struct || isMapOfNames(from)))
  {
    convertToStruct(target, source, place);
  }
  else if (from.kind() == TypeKind::Struct && isMapOfNames(to))
  {
    convertStructToMap(target, source, place);
  }
  else
  {
    place.fail("a " + from.name() + " is no " + to.name());
  }
}
} // namespace

void convert(const AnyConstReference& source, const AnyReference& target)
{
  if (!target.isValid())
  {
    throw ConversionError("there is no value to convert into");
  }
  if (!source.isValid())
  {
    throw ConversionError("cannot convert nothing to " + target.type()->name());
  }
  if (isSameType(*source.type(), *target.type()))
  {
    target.type()->assign(target.address(), source.address());
    return;
  }
  AnyValue converted(*target.type());
  convertInto(converted, source, Place(*source.type(), *target.type()));
  target.type()->assign(target.address(), converted.reference().address());
}

} // namespace vesk
