// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_NATIVETYPES_HPP
#define VESK_NATIVETYPES_HPP

#include <vesk/typeinterface.hpp>

#include <cmath>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// \file
/// The descriptions of C++ types, made by typeOf(). Programs use them through their interfaces.
namespace vesk
{

template <typename Value>
TypeInterface* typeOf();

/// Creates, copies and destroys values of a C++ type, for a description with the given interface.
template <typename Value, typename Interface = TypeInterface>
class NativeType : public Interface
{
  static_assert(std::is_copy_constructible_v<Value>, "the type system copies values");

public:
  const std::type_info& info() const override { return typeid(Value); }

  void* create() const override
  {
    if constexpr (std::is_default_constructible_v<Value>)
    {
      return new Value();
    }
    else
    {
      throw std::logic_error(this->name() + " has no default value");
    }
  }

  void* copy(const void* value) const override { return new Value(of(value)); }

  void destroy(void* value) const noexcept override { delete &of(value); }

  void assign(void* target, const void* source) const override
  {
    if constexpr (std::is_nothrow_move_constructible_v<Value>)
    {
      // If copying throws, the target is unchanged; operator= does not guarantee that.
      Value copied(of(source));
      std::destroy_at(&of(target));
      new (target) Value(std::move(copied));
    }
    else if constexpr (std::is_copy_assignable_v<Value>)
    {
      of(target) = of(source);
    }
    else
    {
      throw std::logic_error(this->name() + " cannot be assigned to");
    }
  }

protected:
  static Value& of(void* value) { return *static_cast<Value*>(value); }
  static const Value& of(const void* value) { return *static_cast<const Value*>(value); }
};

/// Describes a type whose kind and name are all there is to know.
template <typename Value, TypeKind Kind>
class PlainType : public NativeType<Value>
{
public:
  explicit PlainType(std::string typeName) : plainName(std::move(typeName)) {}

  TypeKind kind() const override { return Kind; }
  std::string name() const override { return plainName; }

private:
  std::string plainName;
};

namespace detail
{
/// The number as an integer of this type; none when it is not whole or out of range.
VESK_EXPORT std::optional<std::int64_t> toSigned(const Number& number);
VESK_EXPORT std::optional<std::uint64_t> toUnsigned(const Number& number);
VESK_EXPORT double toDouble(const Number& number);

/// The demangled C++ name of a type, for types of unknown kind.
VESK_EXPORT std::string nameOf(const std::type_info& info);
} // namespace detail

template <typename Value>
class NumberType : public NativeType<Value, NumberTypeInterface>
{
  static constexpr bool isInteger = std::is_integral_v<Value>;
  using Limits = std::numeric_limits<Value>;

public:
  TypeKind kind() const override { return isInteger ? TypeKind::Integer : TypeKind::Float; }

  std::string name() const override
  {
    const std::string bits = std::to_string(8 * sizeof(Value));
    return (!isInteger ? "float" : std::is_signed_v<Value> ? "int" : "uint") + bits;
  }

  Number number(const void* value) const override
  {
    using Wide = std::conditional_t<
        !isInteger, double,
        std::conditional_t<std::is_signed_v<Value>, std::int64_t, std::uint64_t>>;
    return static_cast<Wide>(this->of(value));
  }

  bool setNumber(void* value, const Number& number) const override
  {
    if constexpr (!isInteger)
    {
      const double wide = detail::toDouble(number);
      return (!std::isfinite(wide) || std::abs(wide) <= Limits::max()) && set(value, wide);
    }
    else if constexpr (std::is_signed_v<Value>)
    {
      const std::optional<std::int64_t> wide = detail::toSigned(number);
      return wide && *wide >= Limits::min() && *wide <= Limits::max() && set(value, *wide);
    }
    else
    {
      const std::optional<std::uint64_t> wide = detail::toUnsigned(number);
      return wide && *wide <= Limits::max() && set(value, *wide);
    }
  }

private:
  template <typename Wide>
  static bool set(void* value, Wide wide)
  {
    NumberType::of(value) = static_cast<Value>(wide);
    return true;
  }
};

template <typename List>
class ListType : public NativeType<List, ListTypeInterface>
{
  using Element = typename List::value_type;

public:
  const TypeInterface* elementType() const override { return typeOf<Element>(); }

  std::size_t size(const void* list) const override { return this->of(list).size(); }

  std::vector<void*> elements(void* list) const override
  {
    std::vector<void*> addresses;
    addresses.reserve(size(list));
    for (Element& element : this->of(list))
    {
      addresses.push_back(&element);
    }
    return addresses;
  }

  void* element(void* list, std::size_t index) const override
  {
    detail::requireIndex("element", index, size(list));
    return &*at(list, index);
  }

  void* append(void* list) const override { return &this->of(list).emplace_back(); }

  void* insertCopy(void* list, std::size_t index, const void* element) const override
  {
    detail::requireIndex("place", index, size(list) + 1);
    return &*this->of(list).insert(at(list, index), *static_cast<const Element*>(element));
  }

  void erase(void* list, std::size_t index) const override
  {
    detail::requireIndex("element", index, size(list));
    this->of(list).erase(at(list, index));
  }

  void clear(void* list) const override { this->of(list).clear(); }

private:
  static typename List::iterator at(void* list, std::size_t index)
  {
    List& elements = ListType::of(list);
    return index == elements.size()
               ? elements.end()
               : std::next(elements.begin(), static_cast<std::ptrdiff_t>(index));
  }
};

template <typename Map>
class MapType : public NativeType<Map, MapTypeInterface>
{
  using Key = typename Map::key_type;
  using Value = typename Map::mapped_type;

public:
  const TypeInterface* keyType() const override { return typeOf<Key>(); }
  const TypeInterface* valueType() const override { return typeOf<Value>(); }

  std::size_t size(const void* map) const override { return this->of(map).size(); }

  std::vector<std::pair<const void*, void*>> entries(void* map) const override
  {
    std::vector<std::pair<const void*, void*>> addresses;
    addresses.reserve(size(map));
    for (auto& [key, value] : this->of(map))
    {
      addresses.emplace_back(&key, &value);
    }
    return addresses;
  }

  void* find(void* map, const void* key) const override
  {
    const auto found = this->of(map).find(*static_cast<const Key*>(key));
    return found == this->of(map).end() ? nullptr : &found->second;
  }

  void* insert(void* map, const void* key) const override
  {
    return &this->of(map)[*static_cast<const Key*>(key)];
  }

  void* insertCopy(void* map, const void* key, const void* value) const override
  {
    Value copied(*static_cast<const Value*>(value));
    return &this->of(map)
                .insert_or_assign(*static_cast<const Key*>(key), std::move(copied))
                .first->second;
  }

  bool erase(void* map, const void* key) const override
  {
    return this->of(map).erase(*static_cast<const Key*>(key)) != 0;
  }

  void clear(void* map) const override { this->of(map).clear(); }
};

} // namespace vesk

#endif
