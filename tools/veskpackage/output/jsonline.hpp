// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_JSONLINE_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_JSONLINE_HPP

#include <vesk/anyreference.hpp>

#include <string>

namespace tool
{

/// A value as JSON on one line, with the names of fields that paths have.
std::string jsonLine(const vesk::AnyConstReference& value);
std::string jsonLine(const std::string& text);

} // namespace tool

#endif
