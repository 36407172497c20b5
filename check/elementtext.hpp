// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_ELEMENTTEXT_HPP
#define CHECK_ELEMENTTEXT_HPP

#include <package/xml/reading.hpp>

#include <QString>

namespace vesk::check
{

inline bool isBlank(const QString& text) { return text.trimmed().isEmpty(); }

/// Whether people mean yes by a text.
inline bool saysYes(const QString& text)
{
  const QString lower = text.trimmed().toLower();
  return lower == QLatin1String("true") || lower == QLatin1String("yes") || lower == '1';
}

} // namespace vesk::check

#endif
