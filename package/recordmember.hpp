// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_RECORDMEMBER_HPP
#define PACKAGE_RECORDMEMBER_HPP

#include <vesk/structdescription.hpp>

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

/// What the table of a private record, its StructDescription, says of each member. The type system
/// and the variant form have the members in the order of the table; peers rely on names and order.
/// A table also has a `publicName`, the name of the class that owns the record.
namespace vesk
{

/// Whether a member's value is in the variant form, or an empty value in its place.
enum class InVariant
{
  Value,
  Empty
};

/// Which languages of the package a map keeps when it is trimmed.
enum class Keeps
{
  All, ///< not trimmed
  DescriptionLanguages,
  SupportedLanguages
};

template <typename Record, typename Value>
struct RecordMember
{
  const char* name;             ///< in the type system
  std::string_view variantName; ///< in the variant form; of a literal, so NUL-terminated
  Value Record::*pointer;
  InVariant inVariant = InVariant::Value;
  Keeps keeps = Keeps::All;
};

template <typename Value>
inline constexpr bool isMap = false;
template <typename Item>
inline constexpr bool isMap<std::map<std::string, Item>> = true;

template <typename Record, typename Value>
constexpr RecordMember<Record, Value> recordMember(const char* name, const char* variantName,
                                                   Value Record::*pointer,
                                                   InVariant inVariant = InVariant::Value)
{
  static_assert(!isMap<Value>, "a map says what it keeps when it is trimmed");
  return {name, variantName, pointer, inVariant, Keeps::All};
}

template <typename Record, typename Item>
constexpr RecordMember<Record, std::map<std::string, Item>>
recordMember(const char* name, const char* variantName,
             std::map<std::string, Item> Record::*pointer, Keeps keeps)
{
  return {name, variantName, pointer, InVariant::Value, keeps};
}

/// Calls \p visit with each member of the record's table and its position.
template <typename Record, typename Visitor>
void forEachMember(Visitor visit)
{
  std::apply(
      [&visit](const auto&... members)
      {
        int position = 0;
        (visit(members, position++), ...);
      },
      StructDescription<Record>::members);
}

template <typename Record>
constexpr std::size_t describedMembers =
    std::tuple_size_v<std::decay_t<decltype(StructDescription<Record>::members)>>;

/// Whether the table has as many members as allMembers(record) names. When a member is added to the
/// record, allMembers() does not compile until it names that member as well.
template <typename Record>
constexpr bool describesAllMembers =
    describedMembers<Record> ==
    std::tuple_size_v<decltype(allMembers(std::declval<const Record&>()))>;

} // namespace vesk

#endif
