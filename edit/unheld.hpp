// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_UNHELD_HPP
#define EDIT_UNHELD_HPP

#include <edit/difference.hpp>
#include <edit/manifest.hpp>

#include <string>

namespace vesk::edit
{

/// Why a manifest cannot hold a value that was wanted, and read as another one.
std::string whyUnheld(const Manifest& wanted, const Difference& difference);

/// The path to the part in which a text has come in; empty when there is none.
FieldPath pathTo(const std::string& text, const Manifest& before, const Manifest& after);

} // namespace vesk::edit

#endif
