// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyvalue.hpp>

namespace vesk
{

AnyValue::AnyValue(const TypeInterface& type) : held(&type), content(type.create()) {}

AnyValue::AnyValue(const AnyConstReference& value) : held(value.type())
{
  if (held != nullptr)
  {
    content = held->copy(value.address());
  }
}

AnyValue::AnyValue(const AnyValue& other) : AnyValue(other.reference()) {}

AnyValue::AnyValue(AnyValue&& other) noexcept
    : held(std::exchange(other.held, nullptr)), content(std::exchange(other.content, nullptr))
{}

AnyValue& AnyValue::operator=(const AnyValue& other) { return *this = AnyValue(other); }

AnyValue& AnyValue::operator=(AnyValue&& other) noexcept
{
  // Taken out first: what is assigned may be a part of this value.
  AnyValue taken(std::move(other));
  std::swap(held, taken.held);
  std::swap(content, taken.content);
  return *this;
}

AnyValue::~AnyValue()
{
  if (held != nullptr)
  {
    held->destroy(content);
  }
}

template <>
TypeInterface* typeOf<AnyValue>()
{
  static TypeInterface* const type = detail::getTypeOrDescribe(
      typeid(AnyValue),
      []() -> std::unique_ptr<TypeInterface>
      { return std::make_unique<PlainType<AnyValue, TypeKind::Dynamic>>("dynamic"); });
  return type;
}

} // namespace vesk
