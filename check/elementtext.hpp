// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_ELEMENTTEXT_HPP
#define CHECK_ELEMENTTEXT_HPP

#include <package/xml/reading.hpp>

#include <QString>

namespace vesk::check
{

inline bool isBlank(const QString& text) { return text.trimmed().isEmpty(); }

} // namespace vesk::check

#endif
