// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_ANYREFERENCE_HPP
#define VESK_ANYREFERENCE_HPP

#include <vesk/conversion.hpp>
#include <vesk/export.hpp>
#include <vesk/typesystem.hpp>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace vesk
{

class AnyArgument;

namespace detail
{
/// Excludes types that stand for another value: views, AnyValue, pointers, arrays, string views.
template <typename Value>
using IfPlain =
    std::enable_if_t<!std::is_base_of_v<AnyConstReference, std::remove_const_t<Value>> &&
                         !std::is_base_of_v<AnyArgument, std::remove_const_t<Value>> &&
                         !std::is_same_v<AnyValue, std::remove_const_t<Value>> &&
                         !std::is_pointer_v<Value> && !std::is_null_pointer_v<Value> &&
                         !std::is_array_v<Value> &&
                         !std::is_same_v<std::string_view, std::remove_const_t<Value>>,
                     int>;
} // namespace detail

/// A view of a value of any type, for reading. It owns nothing, and is valid until the value is
/// moved, replaced or destroyed. A part that is an AnyValue is viewed as an AnyValue: to<T>()
/// converts the value it holds, and as<AnyValue>() returns the AnyValue itself. Views are small and
/// cheap to copy; what threads may do depends on the value.
class VESK_EXPORT AnyConstReference
{
public:
  /// A view of nothing.
  AnyConstReference() = default;
  /// A view of the value at an address, which must be of this type.
  AnyConstReference(const TypeInterface& type, const void* value) : viewedType(&type), viewed(value)
  {}
  /// A view of a C++ value.
  template <typename Value, detail::IfPlain<Value> = 0>
  explicit AnyConstReference(const Value& value) : AnyConstReference(*typeOf<Value>(), &value)
  {}
  /// A view of what \p value holds.
  AnyConstReference(const AnyValue& value);

  /// Whether there is a value.
  bool isValid() const { return viewedType != nullptr; }
  /// The type of the value; null when there is none.
  const TypeInterface* type() const { return viewedType; }
  /// The name of the value's type; "nothing" when there is no value.
  std::string typeName() const;
  /// Whether there is a value of this C++ type.
  template <typename Value>
  bool is() const
  {
    return isValid() && isSameType(*viewedType, *typeOf<Value>());
  }
  /// Where the value is; null when there is none.
  const void* address() const { return viewed; }

  /// The value itself. Throws ConversionError when it is of another type.
  template <typename Value>
  const Value& as() const
  {
    return *static_cast<const Value*>(addressOf(*typeOf<Value>()));
  }

  /// A converted copy of the value, by the rules of convert(). Throws ConversionError.
  template <typename Value>
  Value to() const;

  /// The names of a struct's members, in published order. Throws ConversionError when the value is
  /// no struct.
  const std::vector<std::string>& memberNames() const;
  /// A member of a struct, counted from 0. Throws ConversionError when the value is no struct, and
  /// std::out_of_range when it has no such member.
  /// \{
  AnyConstReference member(std::size_t index) const;
  AnyConstReference member(const std::string& name) const;
  /// \}

  /// The number of elements of a list or map. Throws ConversionError when the value is neither.
  std::size_t size() const;
  /// All elements of a list, in order. Throws ConversionError when the value is no list.
  std::vector<AnyConstReference> elements() const;
  /// An element of a list, counted from 0. Throws as elements() does, and std::out_of_range.
  AnyConstReference element(std::size_t index) const;
  /// All keys of a map with their values, in the map's order. Throws ConversionError when the value
  /// is no map.
  std::vector<std::pair<AnyConstReference, AnyConstReference>> entries() const;
  /// The value under \p key, after converting \p key to the map's key type; a view of nothing when
  /// there is no such key. Throws as entries() does, and ConversionError when the key does not
  /// convert.
  AnyConstReference find(const AnyArgument& key) const;

protected:
  bool isMap() const;
  // These throw ConversionError when the value is of another kind.
  const MapTypeInterface& mapType() const;
  const ListTypeInterface& listType() const;
  const ListTypeInterface& listTypeUnlessMap() const;

private:
  const void* addressOf(const TypeInterface& wanted) const;
  template <typename Interface>
  const Interface& typeAs(TypeKind kind, const char* kindName) const;

  const TypeInterface* viewedType = nullptr;
  const void* viewed = nullptr;
};

/// Whether both values are of one type (see isSameType()) and of equal content: numbers, texts and
/// bools by value, lists, maps and structs part by part, an AnyValue by the value it holds. Two views
/// of nothing are equal. Values of a type of unknown kind are equal to themselves only. Throws
/// ConversionError when equal values are nested more than 128 deep.
/// \{
VESK_EXPORT bool operator==(const AnyConstReference& left, const AnyConstReference& right);
inline bool operator!=(const AnyConstReference& left, const AnyConstReference& right)
{
  return !(left == right);
}
/// \}

/// Prints a value for people, on one line and at any length:
/// `Motor{name: "left", limits: [1, 2.5]}`, maps as `{"en": "Arm"}`. Control characters in texts are
/// printed as "\x0a" and the like, a value of unknown kind as its type's name in angle brackets,
/// and what is nested more than 128 deep as "...".
VESK_EXPORT std::ostream& operator<<(std::ostream& out, const AnyConstReference& value);

/// A value as an argument of functions that copy it: any C++ value, a text in any of its forms, a view
/// or an AnyValue. It is made where it is needed, and valid within that call only.
class VESK_EXPORT AnyArgument
{
public:
  AnyArgument(const AnyConstReference& value) : viewed(value) {}
  AnyArgument(const AnyValue& value);
  template <typename Value, detail::IfPlain<Value> = 0>
  AnyArgument(const Value& value) : viewed(value)
  {}
  /// A null pointer throws std::logic_error.
  AnyArgument(const char* value) : text(value), viewed(text) {}
  AnyArgument(std::string_view value) : text(value), viewed(text) {}
  AnyArgument(std::nullptr_t) = delete;
  AnyArgument(const AnyArgument&) = delete;
  AnyArgument& operator=(const AnyArgument&) = delete;

  const AnyConstReference& view() const { return viewed; }

private:
  std::string text;
  AnyConstReference viewed;
};

/// A view through which the value can be changed as well. Otherwise it is like AnyConstReference,
/// whose description of each function applies here, too.
///
/// What changes a value converts its arguments first, by the rules of convert(), to the type of the
/// value or part: if that throws, nothing has changed. Views of a value's parts are invalid after the
/// value has been replaced, or has more or fewer elements.
class VESK_EXPORT AnyReference : public AnyConstReference
{
public:
  AnyReference() = default;
  AnyReference(const TypeInterface& type, void* value) : AnyConstReference(type, value) {}
  template <typename Value, detail::IfPlain<Value> = 0,
            std::enable_if_t<!std::is_const_v<Value>, int> = 0>
  explicit AnyReference(Value& value) : AnyReference(*typeOf<Value>(), &value)
  {}
  AnyReference(AnyValue& value);

  void* address() const { return const_cast<void*>(AnyConstReference::address()); }

  template <typename Value>
  Value& as() const
  {
    return const_cast<Value&>(AnyConstReference::as<Value>());
  }

  AnyReference member(std::size_t index) const
  {
    return writable(AnyConstReference::member(index));
  }
  AnyReference member(const std::string& name) const
  {
    return writable(AnyConstReference::member(name));
  }
  std::vector<AnyReference> elements() const;
  AnyReference element(std::size_t index) const
  {
    return writable(AnyConstReference::element(index));
  }
  std::vector<std::pair<AnyConstReference, AnyReference>> entries() const;
  AnyReference find(const AnyArgument& key) const { return writable(AnyConstReference::find(key)); }

  /// Replaces the value by a converted copy.
  void set(const AnyArgument& value) const { convert(value.view(), *this); }

  /// Appends an element to a list, a default one or a converted copy, and gives a view of it. Throws
  /// ConversionError when the value is no list.
  /// \{
  AnyReference append() const;
  AnyReference append(const AnyArgument& element) const;
  /// \}

  /// In a list, inserts a converted copy of \p value before the element at \p place, counted from 0;
  /// the number of elements stands for the end. In a map, makes it the value under the key \p place,
  /// instead of one that was there. Gives a view of the inserted value. Throws ConversionError when
  /// the value is neither list nor map, and std::out_of_range when a list has no such place.
  AnyReference insert(const AnyArgument& place, const AnyArgument& value) const;
  /// Removes the element at \p place from a list, or the entry with the key \p place from a map.
  /// False when a map has no such key; otherwise throws as insert() does.
  bool erase(const AnyArgument& place) const;
  /// Removes all elements of a list or map. Throws ConversionError when the value is neither.
  void clear() const;

private:
  // Only for parts that were reached through a writable view.
  static AnyReference writable(const AnyConstReference& part)
  {
    return part.isValid() ? AnyReference(*part.type(), const_cast<void*>(part.address()))
                          : AnyReference();
  }
};

template <typename Value>
inline Value AnyConstReference::to() const // inline, so that libraries that use it do not export it
{
  if (is<Value>())
  {
    return as<Value>();
  }
  if constexpr (std::is_default_constructible_v<Value>)
  {
    Value converted{};
    detail::convertAfresh(*this, AnyReference(*typeOf<Value>(), &converted));
    return converted;
  }
  else
  {
    return *static_cast<const Value*>(detail::addressOfHeld(*this, *typeOf<Value>()));
  }
}

} // namespace vesk

#endif
