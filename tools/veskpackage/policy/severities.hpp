// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_POLICY_SEVERITIES_HPP
#define TOOLS_VESKPACKAGE_POLICY_SEVERITIES_HPP

#include <check/manifestcheck.hpp>

#include <string>

namespace tool
{

/// The severity that the rule \p tag is given by the name of one. Throws std::invalid_argument with
/// a line for people when there is no such rule or severity, or the rule's cannot be changed.
vesk::check::Severity severityFor(const std::string& tag, const std::string& name);

} // namespace tool

#endif
