// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_TYPESYSTEM_HPP
#define VESK_TYPESYSTEM_HPP

#include <vesk/structtypes.hpp>
#include <vesk/typeregistry.hpp>

#include <list>
#include <map>

/// \file
/// The type system: descriptions of types, with which code can hold, inspect and convert values of
/// types that it does not know (see AnyValue).
///
/// typeOf<T>() gives the description of a type. bool, integers, floating-point numbers, std::string,
/// std::vector (but not of bool), std::list, std::map, std::pair and AnyValue have one; a struct gets
/// one from its StructDescription. Any other type, and one whose parts have no default value or
/// cannot be assigned to, has a description of unknown kind, by which it can be held and copied.
namespace vesk
{

class AnyValue;

namespace detail
{
template <typename Value>
constexpr bool hasDefaultAndAssignment =
    std::is_default_constructible_v<Value>&& std::is_copy_assignable_v<Value>;

template <typename Value, typename = void>
struct IsDescribedStruct : std::false_type
{};
template <typename Value>
struct IsDescribedStruct<Value, std::void_t<decltype(StructDescription<Value>::members)>>
    : std::bool_constant<hasDefaultAndAssignment<Value>>
{};

template <typename Value>
struct IsList : std::false_type
{};
template <typename Element>
struct IsList<std::list<Element>> : std::bool_constant<hasDefaultAndAssignment<Element>>
{};
template <typename Element>
struct IsList<std::vector<Element>>
    : std::bool_constant<hasDefaultAndAssignment<Element> && !std::is_same_v<Element, bool>>
{};

template <typename Value>
struct IsMap : std::false_type
{};
template <typename Key, typename Value>
struct IsMap<std::map<Key, Value>>
    : std::bool_constant<hasDefaultAndAssignment<Key> && hasDefaultAndAssignment<Value>>
{};

template <typename Value>
std::unique_ptr<TypeInterface> describe()
{
  if constexpr (std::is_same_v<Value, bool>)
  {
    return std::make_unique<PlainType<Value, TypeKind::Bool>>("bool");
  }
  else if constexpr (std::is_arithmetic_v<Value>)
  {
    return std::make_unique<NumberType<Value>>();
  }
  else if constexpr (std::is_same_v<Value, std::string>)
  {
    return std::make_unique<PlainType<Value, TypeKind::String>>("string");
  }
  else if constexpr (IsList<Value>::value)
  {
    return std::make_unique<ListType<Value>>();
  }
  else if constexpr (IsMap<Value>::value)
  {
    return std::make_unique<MapType<Value>>();
  }
  else if constexpr (IsDescribedStruct<Value>::value)
  {
    return std::make_unique<StructType<Value>>();
  }
  else
  {
    return std::make_unique<PlainType<Value, TypeKind::Unknown>>(nameOf(typeid(Value)));
  }
}
} // namespace detail

/// The description of a C++ type: the registered one, else one that is made on first use, once in
/// the process. Never null.
template <typename Value>
TypeInterface* typeOf()
{
  static_assert(std::is_same_v<Value, std::decay_t<Value>>, "ask for the type of values");
  static TypeInterface* const type =
      detail::getTypeOrDescribe(typeid(Value), &detail::describe<Value>);
  return type;
}

template <>
VESK_EXPORT TypeInterface* typeOf<AnyValue>();

} // namespace vesk

#endif
