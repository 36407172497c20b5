// SPDX-License-Identifier: Apache-2.0
#include "pose.hpp"

std::string two::frameOf(const vesk::AnyValue& pose) { return pose.as<Pose>().frame; }

double two::convertedX(const vesk::AnyValue& members) { return members.to<Pose>().x; }

std::array<vesk::TypeInterface*, unseenTypes> two::types() { return typesOfUnseen(); }
