// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyreference.hpp>
#include <vesk/anyvalue.hpp>

namespace vesk
{
namespace
{
std::string nameOf(const TypeInterface* type) { return type != nullptr ? type->name() : "nothing"; }

// The type interfaces take a non-const address even where they only read the value.
void* writableAddress(const AnyConstReference& view) { return const_cast<void*>(view.address()); }
} // namespace

AnyConstReference::AnyConstReference(const AnyValue& value) : AnyConstReference(value.reference())
{}

AnyReference::AnyReference(AnyValue& value) : AnyReference(value.reference()) {}

const void* AnyConstReference::addressOf(const TypeInterface& wanted) const
{
  if (!isValid() || !isSameType(*viewedType, wanted))
  {
    throw ConversionError("the value is " + nameOf(viewedType) + ", not " + wanted.name());
  }
  return viewed;
}

template <typename Interface>
inline const Interface& AnyConstReference::typeAs(TypeKind kind, const char* kindName) const
{
  if (!isValid() || viewedType->kind() != kind)
  {
    throw ConversionError("the value is " + nameOf(viewedType) + ", no " + kindName);
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
  return {*type.memberTypes().at(index), type.member(writableAddress(*this), index)};
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

std::size_t AnyConstReference::size() const
{
  if (isValid() && viewedType->kind() == TypeKind::Map)
  {
    return static_cast<const MapTypeInterface&>(*viewedType).size(viewed);
  }
  return typeAs<ListTypeInterface>(TypeKind::List, "list or map").size(viewed);
}

std::vector<AnyConstReference> AnyConstReference::elements() const
{
  const auto& type = typeAs<ListTypeInterface>(TypeKind::List, "list");
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
  const auto& type = typeAs<ListTypeInterface>(TypeKind::List, "list");
  return {*type.elementType(), type.element(writableAddress(*this), index)};
}

std::vector<std::pair<AnyConstReference, AnyConstReference>> AnyConstReference::entries() const
{
  const auto& type = typeAs<MapTypeInterface>(TypeKind::Map, "map");
  std::vector<std::pair<AnyConstReference, AnyConstReference>> views;
  views.reserve(type.size(viewed));
  for (const auto& [key, value] : type.entries(writableAddress(*this)))
  {
    views.emplace_back(AnyConstReference(*type.keyType(), key),
                       AnyConstReference(*type.valueType(), value));
  }
  return views;
}

AnyConstReference AnyConstReference::find(const AnyConstReference& key) const
{
  const auto& type = typeAs<MapTypeInterface>(TypeKind::Map, "map");
  AnyValue converted(*type.keyType());
  AnyReference(converted).set(key);
  void* const found = type.find(writableAddress(*this), converted.reference().address());
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

} // namespace vesk
