// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CONFUSIONS_HPP
#define CHECK_CONFUSIONS_HPP

#include <QString>

#include <vector>

namespace vesk::check
{

/// Of some names of the format those for which another one is usually written, as "id" for "uuid".
std::vector<QString> usuallyMeant(const QString& written, const std::vector<QString>& known);

/// The same or, if there are none, those that are nearest to what is written.
std::vector<QString> probablyMeant(const QString& written, const std::vector<QString>& known);

} // namespace vesk::check

#endif
