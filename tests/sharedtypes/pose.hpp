// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SHAREDTYPES_POSE_HPP
#define TESTS_SHAREDTYPES_POSE_HPP

#include <vesk/anyvalue.hpp>

#include <array>
#include <string>

/// A type that several libraries know, none of which exports it.
struct Pose
{
  double x = 0;
  std::string frame;
};

template <>
struct vesk::StructDescription<Pose>
{
  static constexpr auto name = "Pose";
  static constexpr auto members =
      std::make_tuple(vesk::member("x", &Pose::x), vesk::member("frame", &Pose::frame));
};

/// Types that are described when they are first asked for.
template <std::size_t Index>
struct Unseen
{};
constexpr std::size_t unseenTypes = 16;

/// All of these, in order.
template <std::size_t... Index>
std::array<vesk::TypeInterface*, unseenTypes> typesOfUnseen(std::index_sequence<Index...>)
{
  return {vesk::typeOf<std::vector<Unseen<Index>>>()...};
}
inline std::array<vesk::TypeInterface*, unseenTypes> typesOfUnseen()
{
  return typesOfUnseen(std::make_index_sequence<unseenTypes>());
}

/// What each of the two libraries does, with types of its own compilation.
#define VISIBLE __attribute__((visibility("default")))
namespace one
{
VISIBLE vesk::AnyValue makePose();
VISIBLE std::array<vesk::TypeInterface*, unseenTypes> types();
} // namespace one
namespace two
{
VISIBLE std::string frameOf(const vesk::AnyValue& pose);
VISIBLE double convertedX(const vesk::AnyValue& members);
VISIBLE std::array<vesk::TypeInterface*, unseenTypes> types();
} // namespace two

#endif
