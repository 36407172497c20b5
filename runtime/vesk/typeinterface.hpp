// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_TYPEINTERFACE_HPP
#define VESK_TYPEINTERFACE_HPP

#include <vesk/export.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <typeinfo>
#include <utility>
#include <variant>
#include <vector>

namespace vesk
{

/// What can be done with the values of a type beside creating, copying and destroying them.
enum class TypeKind
{
  Unknown, ///< nothing more
  Bool,    ///< the native type is bool
  Integer, ///< the description is a NumberTypeInterface
  Float,   ///< the description is a NumberTypeInterface
  String,  ///< the native type is std::string
  List,    ///< the description is a ListTypeInterface
  Map,     ///< the description is a MapTypeInterface
  Struct,  ///< the description is a StructTypeInterface
  Dynamic  ///< the native type is AnyValue, which holds a value of any type
};

/// Describes one type, so that its values can be held and handled by code that was compiled without
/// it.
///
/// Values are passed by address; the caller ensures that they are of the described type. Functions
/// that return the address of a part return a pointer into the value, valid until the value
/// changes. Looking up a part must not change the value, since parts of constant values are looked
/// up, too. A description never changes and lives to the end of the process, so any thread may use
/// it on values that no other thread uses. Exceptions of the native type's own operations pass
/// through.
class VESK_EXPORT TypeInterface
{
public:
  TypeInterface(const TypeInterface&) = delete;
  TypeInterface& operator=(const TypeInterface&) = delete;
  virtual ~TypeInterface();

  virtual TypeKind kind() const = 0;
  /// For people; peers also look up structs by it.
  virtual std::string name() const = 0;
  /// The native type; typeid(void) for a type described at run time, which has none.
  virtual const std::type_info& info() const = 0;

  /// A new default value, to be given to destroy(). Values of a native type are made by `new`, here
  /// and elsewhere. Throws std::logic_error when the native type
  /// has no default constructor.
  virtual void* create() const = 0;
  /// A new copy of \p value, to be given to destroy().
  virtual void* copy(const void* value) const = 0;
  virtual void destroy(void* value) const noexcept = 0;
  /// Makes \p target a copy of \p source.
  virtual void assign(void* target, const void* source) const = 0;

protected:
  TypeInterface() = default;
};

/// Whether the two descriptions are of the same C++ type. Types described at run time are the same
/// only when both references are to one description.
VESK_EXPORT bool isSameType(const TypeInterface& left, const TypeInterface& right);

namespace detail
{
/// Throws std::out_of_range, as in "no member 99; there are 20", unless \p index is below \p count.
VESK_EXPORT void requireIndex(const char* what, std::size_t index, std::size_t count);
} // namespace detail

/// A number of any native type.
using Number = std::variant<std::int64_t, std::uint64_t, double>;

/// Describes integers and floating-point numbers.
class VESK_EXPORT NumberTypeInterface : public TypeInterface
{
public:
  virtual Number number(const void* value) const = 0;
  /// False, and nothing is changed, when \p number does not fit: when an integer type cannot hold
  /// it exactly, or when it is finite but out of range for a floating-point type, which may round
  /// it.
  virtual bool setNumber(void* value, const Number& number) const = 0;
};

/// Describes sequences. Elements are counted from 0.
class VESK_EXPORT ListTypeInterface : public TypeInterface
{
public:
  TypeKind kind() const override { return TypeKind::List; }
  std::string name() const override;

  virtual const TypeInterface* elementType() const = 0;
  virtual std::size_t size(const void* list) const = 0;
  /// The addresses of all elements, in order.
  virtual std::vector<void*> elements(void* list) const = 0;
  /// The address of an element. Throws std::out_of_range when there is none at \p index.
  virtual void* element(void* list, std::size_t index) const = 0;
  /// Appends a default element and gives its address.
  virtual void* append(void* list) const = 0;
  /// Inserts a copy of \p element before the one at \p index, or at the end if that is the list's
  /// size, and gives its address. Throws std::out_of_range when \p index is greater.
  virtual void* insertCopy(void* list, std::size_t index, const void* element) const = 0;
  /// Removes an element. Throws as element() does.
  virtual void erase(void* list, std::size_t index) const = 0;
  virtual void clear(void* list) const = 0;
};

/// Describes maps from unique keys to values.
class VESK_EXPORT MapTypeInterface : public TypeInterface
{
public:
  TypeKind kind() const override { return TypeKind::Map; }
  std::string name() const override;

  virtual const TypeInterface* keyType() const = 0;
  virtual const TypeInterface* valueType() const = 0;
  virtual std::size_t size(const void* map) const = 0;
  /// The addresses of all keys and their values, in the map's order.
  virtual std::vector<std::pair<const void*, void*>> entries(void* map) const = 0;
  /// The address of the value under \p key; null when there is none.
  virtual void* find(void* map, const void* key) const = 0;
  /// The address of the value under \p key; a default value is inserted first if there is none.
  virtual void* insert(void* map, const void* key) const = 0;
  /// Makes a copy of \p value the value under \p key, and gives its address.
  virtual void* insertCopy(void* map, const void* key, const void* value) const = 0;
  /// Removes the value under \p key; false when there is none.
  virtual bool erase(void* map, const void* key) const = 0;
  virtual void clear(void* map) const = 0;
};

/// Where the members of a struct and those of a peer's value differ, by name.
struct MemberDifference
{
  std::vector<std::string> missing; ///< the struct has them, the peer does not
  std::vector<std::string> surplus; ///< the peer has them, the struct does not
};

/// Describes structs: members with names, counted from 0 in the order in which they are published
/// to peers. A pair is a struct with the members "first" and "second".
class VESK_EXPORT StructTypeInterface : public TypeInterface
{
public:
  TypeKind kind() const override { return TypeKind::Struct; }

  virtual const std::vector<std::string>& memberNames() const = 0;
  virtual const std::vector<const TypeInterface*>& memberTypes() const = 0;
  std::optional<std::size_t> memberIndex(const std::string& memberName) const;

  /// The address of a member. Throws std::out_of_range when there is none at \p index.
  virtual void* member(void* value, std::size_t index) const = 0;
  /// Makes a member a copy of \p source, which is of the member's type. Throws as member() does.
  void setMember(void* value, std::size_t index, const void* source) const;

  /// Called when a peer's value with other members is to be converted to \p value, a default value
  /// so far. Returns whether that is possible; if so, it has filled the missing members. The common
  /// members are converted later. The default implementation returns false.
  virtual bool convertFrom(void* value, const MemberDifference& difference) const;
  /// Called when a value is to be converted to a peer's struct whose convertFrom() has returned
  /// false. Returns whether the peer can do without the members that it is missing, and with
  /// defaults for its surplus ones. The default implementation returns false.
  virtual bool convertTo(const MemberDifference& difference) const;
};

} // namespace vesk

#endif
