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
/// Values are passed by address; whoever calls sees to it that they are of the described type. The
/// addresses that describing a value's parts gives are those of the parts in the value, valid until
/// it changes. Looking at parts must not change the value, since constant values are looked into as
/// well. A description never changes and lives to the end of the process, so that any thread
/// may use it, as far as it has the values for itself. What the native type's own operations throw
/// passes through.
class VESK_EXPORT TypeInterface
{
public:
  TypeInterface(const TypeInterface&) = delete;
  TypeInterface& operator=(const TypeInterface&) = delete;
  virtual ~TypeInterface();

  virtual TypeKind kind() const = 0;
  /// For people and, of structs, for peers, which look types up by it.
  virtual std::string name() const = 0;
  /// The native type; that of void when the type was described at run time and has none.
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

/// Whether values of the two types are the same to C++. Types described at run time are the same
/// only when their descriptions are.
VESK_EXPORT bool isSameType(const TypeInterface& left, const TypeInterface& right);

/// A number of any native type.
using Number = std::variant<std::int64_t, std::uint64_t, double>;

/// Describes integers and floating-point numbers.
class VESK_EXPORT NumberTypeInterface : public TypeInterface
{
public:
  virtual Number number(const void* value) const = 0;
  /// False, and nothing is changed, when \p number does not fit: when an integer type cannot hold
  /// it as it is, or when it lies outside the range of a floating-point type, which rounds.
  virtual bool setNumber(void* value, const Number& number) const = 0;
};

/// Describes sequences. Elements are counted from 0.
class VESK_EXPORT ListTypeInterface : public TypeInterface
{
public:
  TypeKind kind() const override { return TypeKind::List; }
  std::string name() const override;

  virtual TypeInterface* elementType() const = 0;
  virtual std::size_t size(const void* list) const = 0;
  /// The addresses of all elements, in order.
  virtual std::vector<void*> elements(void* list) const = 0;
  /// The address of an element. Throws std::out_of_range when there is none at \p index.
  virtual void* element(void* list, std::size_t index) const = 0;
  /// Appends a default element and gives its address.
  virtual void* append(void* list) const = 0;
  /// Appends a copy of \p element.
  virtual void appendCopy(void* list, const void* element) const = 0;
  virtual void clear(void* list) const = 0;
};

/// Describes maps from unique keys to values.
class VESK_EXPORT MapTypeInterface : public TypeInterface
{
public:
  TypeKind kind() const override { return TypeKind::Map; }
  std::string name() const override;

  virtual TypeInterface* keyType() const = 0;
  virtual TypeInterface* valueType() const = 0;
  virtual std::size_t size(const void* map) const = 0;
  /// The addresses of all keys and their values, in the map's order.
  virtual std::vector<std::pair<const void*, void*>> entries(void* map) const = 0;
  /// The address of the value under \p key; null when there is none.
  virtual void* find(void* map, const void* key) const = 0;
  /// The address of the value under \p key, a default one where there was none.
  virtual void* insert(void* map, const void* key) const = 0;
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
  virtual const std::vector<TypeInterface*>& memberTypes() const = 0;
  std::optional<std::size_t> memberIndex(const std::string& memberName) const;

  /// The address of a member. Throws std::out_of_range when there is none at \p index.
  virtual void* member(void* value, std::size_t index) const = 0;
  /// Makes a member a copy of \p source, which is of the member's type. Throws as member() does.
  void setMember(void* value, std::size_t index, const void* source) const;

  /// Asked when a peer's value with other members is to become \p value, which is a default one; the
  /// members that both have are converted later. True when it can, and the missing members are
  /// filled then. As it stands here, it cannot.
  virtual bool convertFrom(void* value, const MemberDifference& difference) const;
  /// Asked when a value is to become a peer's, and the peer itself has not agreed: true when it can,
  /// that is, when the peer can do without the missing members, and with nothing for the surplus.
  /// As it stands here, it cannot.
  virtual bool convertTo(const MemberDifference& difference) const;
};

} // namespace vesk

#endif
