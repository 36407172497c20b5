// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_ANYREFERENCE_HPP
#define VESK_ANYREFERENCE_HPP

#include <vesk/export.hpp>
#include <vesk/typesystem.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace vesk
{

class AnyConstReference;
class AnyReference;

/// Thrown where a value is not of the type it is taken for, or cannot be converted. The message of a
/// conversion names both types and the place in the source that could not be converted, as in
/// `cannot convert peer::Package to ::vesk::PackageInfo: behaviors[2]: without "nature"`.
class VESK_EXPORT ConversionError : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

/// Replaces the value that \p target refers to by a converted copy of \p source. If this throws,
/// the value is unchanged.
///
/// A value of the same type is copied. Numbers convert if the target can hold them: integers
/// exactly, floating point with rounding. Lists, maps and pairs convert element by element. An
/// AnyValue converts as the value it holds, and any value converts to an AnyValue. Structs convert
/// by the names of their members; both must have the same names, except where a struct's versioning
/// allows otherwise. A map with string keys is treated as a struct whose members are its entries.
/// All else, and values nested more than 128 deep, throw ConversionError.
VESK_EXPORT void convert(const AnyConstReference& source, const AnyReference& target);

namespace detail
{
/// Values may come from untrusted sources; deeper nesting could exhaust the stack.
inline constexpr int deepestNesting = 128;

/// Like convert(), but converts in place: when it throws, \p target is incomplete, to be discarded.
VESK_EXPORT void convertAfresh(const AnyConstReference& source, const AnyReference& target);

/// Excludes types that stand for another value: views, AnyValue, pointers, arrays, string views.
template <typename Value>
using IfPlain =
    std::enable_if_t<!std::is_base_of_v<AnyConstReference, std::remove_const_t<Value>> &&
                         !std::is_same_v<AnyValue, std::remove_const_t<Value>> &&
                         !std::is_pointer_v<Value> && !std::is_array_v<Value> &&
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
  /// \{
  AnyConstReference find(const AnyConstReference& key) const;
  AnyConstReference find(const std::string& key) const { return find(AnyConstReference(key)); }
  /// \}

private:
  const void* addressOf(const TypeInterface& wanted) const;
  template <typename Interface>
  const Interface& typeAs(TypeKind kind, const char* kindName) const;

  const TypeInterface* viewedType = nullptr;
  const void* viewed = nullptr;
};

/// A view through which the value can be changed as well. Otherwise it is like AnyConstReference,
/// whose description of each function applies here, too.
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
  AnyReference find(const AnyConstReference& key) const
  {
    return writable(AnyConstReference::find(key));
  }
  AnyReference find(const std::string& key) const { return find(AnyConstReference(key)); }

  /// Replaces the value by a converted copy, by the rules of convert(); views of the value's parts
  /// are invalid afterwards. If this throws, the value is unchanged. A null pointer throws
  /// std::logic_error.
  /// \{
  void set(const AnyConstReference& source) const { convert(source, *this); }
  void set(const char* text) const { set(std::string(text)); }
  void set(std::string_view text) const { set(std::string(text)); }
  template <typename Value, detail::IfPlain<Value> = 0>
  void set(const Value& value) const
  {
    convert(AnyConstReference(value), *this);
  }
  /// \}

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
    return as<Value>(); // throws, since the type differs
  }
}

} // namespace vesk

#endif
