// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CHECKING_HPP
#define CHECK_CHECKING_HPP

#include <check/manifestcheck.hpp>

namespace vesk::check
{

/// As checkBytes(), with all findings of a rule, however many there are.
std::vector<Finding> checkWithoutLimit(const std::string& bytes, const Options& options);

} // namespace vesk::check

#endif
