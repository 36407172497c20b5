// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_MEMBERNAME_HPP
#define EDIT_MEMBERNAME_HPP

#include <edit/export.hpp>
#include <vesk/typeinterface.hpp>

#include <string>

namespace vesk::edit
{

/// What a registered member of a record is called for people, as "names" for "langToName": the name
/// that it has in a package's variant form. Most are called as they are registered; what is no
/// member of \p record, or \p record none of a package's records, is given back as it is.
VESKPACKAGE_EDIT_EXPORT std::string friendlyName(const TypeInterface& record,
                                                 const std::string& memberName);

} // namespace vesk::edit

#endif
