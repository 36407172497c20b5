// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyreference.hpp>
#include <vesk/anyvalue.hpp>

namespace vesk
{
namespace
{
// The type interfaces take a non-const address even where they only read the value.
void* writableAddress(const AnyConstReference& view) { return const_cast<void*>(view.address()); }

/// An argument as a value of some type: itself, or a converted copy.
class Converted
{
public:
  Converted(const TypeInterface& type, const AnyArgument& argument) : value(argument.view())
  {
    if (!value.isValid() || !isSameType(*value.type(), type))
    {
      copy = AnyValue(type);
      detail::convertAfresh(value, copy);
      value = copy;
    }
  }

  const void* address() const { return value.address(); }

private:
  AnyConstReference value;
  AnyValue copy;
};

/// An argument as a position in a list.
std::size_t positionFrom(const AnyArgument& place)
{
  const Converted position(*typeOf<std::size_t>(), place);
  return *static_cast<const std::size_t*>(position.address());
}
} // namespace

AnyConstReference::AnyConstReference(const AnyValue& value) : AnyConstReference(value.reference())
{}

AnyArgument::AnyArgument(const AnyValue& value) : viewed(value) {}

AnyReference::AnyReference(AnyValue& value) : AnyReference(value.reference()) {}

std::string AnyConstReference::typeName() const
{
  return isValid() ? viewedType->name() : "nothing";
}

const void* AnyConstReference::addressOf(const TypeInterface& wanted) const
{
  if (!isValid() || !isSameType(*viewedType, wanted))
  {
    throw ConversionError("the value is " + typeName() + ", not " + wanted.name());
  }
  return viewed;
}

template <typename Interface>
inline const Interface& AnyConstReference::typeAs(TypeKind kind, const char* kindName) const
{
  if (!isValid() || viewedType->kind() != kind)
  {
    throw ConversionError("the value is " + typeName() + ", no " + kindName);
  }
  return static_cast<const Interface&>(*viewedType);
}

const std::vector<std::string>& AnyConstReference::memberNames() const
{
  return typeAs<StructTypeInterface>(TypeKind::Struct, "struct").memberNames();
}

AnyConstReference AnyConstReference::member(std::size_t index) const
{
  const auto& type = typeAs<StructTypeInterface>(TypeKind::Struct, "struct");
  void* const found = type.member(writableAddress(*this), index); // throws if there is none
  return {*type.memberTypes()[index], found};
}

AnyConstReference AnyConstReference::member(const std::string& name) const
{
  const auto& type = typeAs<StructTypeInterface>(TypeKind::Struct, "struct");
  const std::optional<std::size_t> index = type.memberIndex(name);
  if (!index)
  {
    throw std::out_of_range(type.name() + " has no member \"" + name + '"');
  }
  return member(*index);
}

bool AnyConstReference::isMap() const { return isValid() && viewedType->kind() == TypeKind::Map; }

const MapTypeInterface& AnyConstReference::mapType() const
{
  return typeAs<MapTypeInterface>(TypeKind::Map, "map");
}

const ListTypeInterface& AnyConstReference::listType() const
{
  return typeAs<ListTypeInterface>(TypeKind::List, "list");
}

const ListTypeInterface& AnyConstReference::listTypeUnlessMap() const
{
  return typeAs<ListTypeInterface>(TypeKind::List, "list or map");
}

std::size_t AnyConstReference::size() const
{
  return isMap() ? mapType().size(viewed) : listTypeUnlessMap().size(viewed);
}

std::vector<AnyConstReference> AnyConstReference::elements() const
{
  const auto& type = listType();
  std::vector<AnyConstReference> views;
  views.reserve(type.size(viewed));
  for (const void* element : type.elements(writableAddress(*this)))
  {
    views.emplace_back(*type.elementType(), element);
  }
  return views;
}

AnyConstReference AnyConstReference::element(std::size_t index) const
{
  const ListTypeInterface& type = listType();
  return {*type.elementType(), type.element(writableAddress(*this), index)};
}

std::vector<std::pair<AnyConstReference, AnyConstReference>> AnyConstReference::entries() const
{
  const MapTypeInterface& type = mapType();
  std::vector<std::pair<AnyConstReference, AnyConstReference>> views;
  views.reserve(type.size(viewed));
  for (const auto& [key, value] : type.entries(writableAddress(*this)))
  {
    views.emplace_back(AnyConstReference(*type.keyType(), key),
                       AnyConstReference(*type.valueType(), value));
  }
  return views;
}

AnyConstReference AnyConstReference::find(const AnyArgument& key) const
{
  const MapTypeInterface& type = mapType();
  const Converted converted(*type.keyType(), key);
  void* const found = type.find(writableAddress(*this), converted.address());
  return found != nullptr ? AnyConstReference(*type.valueType(), found) : AnyConstReference();
}

std::vector<AnyReference> AnyReference::elements() const
{
  std::vector<AnyReference> views;
  for (const AnyConstReference& element : AnyConstReference::elements())
  {
    views.push_back(writable(element));
  }
  return views;
}

std::vector<std::pair<AnyConstReference, AnyReference>> AnyReference::entries() const
{
  std::vector<std::pair<AnyConstReference, AnyReference>> views;
  for (const auto& [key, value] : AnyConstReference::entries())
  {
    views.emplace_back(key, writable(value));
  }
  return views;
}

AnyReference AnyReference::append() const
{
  const ListTypeInterface& type = listType();
  return {*type.elementType(), type.append(address())};
}

AnyReference AnyReference::append(const AnyArgument& element) const
{
  const ListTypeInterface& type = listType();
  const Converted converted(*type.elementType(), element);
  return {*type.elementType(),
          type.insertCopy(address(), type.size(address()), converted.address())};
}

AnyReference AnyReference::insert(const AnyArgument& place, const AnyArgument& value) const
{
  if (isMap())
  {
    const MapTypeInterface& type = mapType();
    const Converted key(*type.keyType(), place);
    const Converted converted(*type.valueType(), value);
    return {*type.valueType(), type.insertCopy(address(), key.address(), converted.address())};
  }
  const ListTypeInterface& type = listTypeUnlessMap();
  const Converted converted(*type.elementType(), value);
  return {*type.elementType(),
          type.insertCopy(address(), positionFrom(place), converted.address())};
}

bool AnyReference::erase(const AnyArgument& place) const
{
  if (isMap())
  {
    return mapType().erase(address(), Converted(*mapType().keyType(), place).address());
  }
  listTypeUnlessMap().erase(address(), positionFrom(place));
  return true;
}

void AnyReference::clear() const
{
  isMap() ? mapType().clear(address()) : listTypeUnlessMap().clear(address());
}

} // namespace vesk
