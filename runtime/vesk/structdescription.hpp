// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_STRUCTDESCRIPTION_HPP
#define VESK_STRUCTDESCRIPTION_HPP

#include <array>
#include <tuple>

namespace vesk
{

/// One member of a struct: its published name and where it is.
template <typename Struct, typename Value>
struct Member
{
  const char* name;
  Value Struct::*pointer;
};

template <typename Struct, typename Value>
constexpr Member<Struct, Value> member(const char* name, Value Struct::*pointer)
{
  return {name, pointer};
}

/// Specialise this template to describe a struct to the type system. The specialisation must be
/// visible wherever the type system is asked about the struct, so put it next to the struct:
///
/// \code
/// struct Point { double x; double y; };
///
/// template <> struct vesk::StructDescription<Point>
/// {
///   static constexpr auto name = "::Point";
///   static constexpr auto members =
///       std::make_tuple(vesk::member("x", &Point::x), vesk::member("y", &Point::y));
/// };
/// \endcode
///
/// The struct must have a default constructor and be copyable. The order of the members is the order
/// in which peers see them. An element of the tuple may be of another class that has a `name` and a
/// `pointer`. Where members are private, the struct befriends its description.
///
/// If members were added after the struct's first version, and it is to be exchanged with peers of
/// that version, list the added names as well: `static constexpr std::array addedFields{"z"};`.
/// Members that a peer lacks get the default of their type, not of the struct: a bool becomes false
/// (see StructVersioningDelegateAddFields).
template <typename Struct>
struct StructDescription;

} // namespace vesk

#endif
