// SPDX-License-Identifier: Apache-2.0
#ifndef FUZZ_RANDOMVALUE_HPP
#define FUZZ_RANDOMVALUE_HPP

#include <vesk/anyvalue.hpp>

#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <vector>

std::string randomText(FuzzedDataProvider& data);

/// Fills a default value by its description, members, elements and all. AnyValues get values of one
/// of \p types, or none.
void fillRandomly(const vesk::AnyReference& value, FuzzedDataProvider& data,
                  const std::vector<const vesk::TypeInterface*>& types = {});

#endif
