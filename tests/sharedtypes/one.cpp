// SPDX-License-Identifier: Apache-2.0
#include "pose.hpp"

namespace
{
const bool registered = []
{
  auto* const pose = new vesk::StructType<Pose>;
  return vesk::registerStruct(pose) && vesk::registerType(typeid(Pose), pose);
}();
} // namespace

vesk::AnyValue one::makePose() { return Pose{registered ? 1.5 : 0, "map"}; }

std::array<vesk::TypeInterface*, unseenTypes> one::types() { return typesOfUnseen(); }
