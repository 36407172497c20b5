// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_ELEMENTTEXT_HPP
#define CHECK_ELEMENTTEXT_HPP

#include <package/xml/reading.hpp>

#include <QDomElement>
#include <QString>

namespace vesk::check
{

/// All text below an element, as the readers take it.
inline QString textIn(const QDomElement& element)
{
  return QString::fromStdString(textOf(element));
}

inline bool isBlank(const QString& text) { return text.trimmed().isEmpty(); }

} // namespace vesk::check

#endif
