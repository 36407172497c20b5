// SPDX-License-Identifier: Apache-2.0
// Does not compile: GIVEN is nothing that a generic value could hold.
#include <vesk/anyvalue.hpp>

#include <memory>

vesk::AnyValue made() { return GIVEN; }
