// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_PRINTING_HPP
#define VESK_PRINTING_HPP

#include <vesk/typeinterface.hpp>

#include <string>
#include <string_view>

/// How values and texts look in messages.
namespace vesk::detail
{

/// With as many digits as it takes to tell it from all others.
std::string printed(const Number& number);

/// With control characters, on which terminals act, as "\x0a" and the like.
std::string withEscapedControls(std::string_view text);

} // namespace vesk::detail

#endif
