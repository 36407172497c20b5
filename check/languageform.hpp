// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_LANGUAGEFORM_HPP
#define CHECK_LANGUAGEFORM_HPP

#include <QString>

namespace vesk::check
{

/// Whether a text has the form of a language's code, as "en", "en_US", "zh-Hant-TW", "x-private" or
/// "de_DE.UTF-8@euro". That there is such a language is not looked at.
bool isLanguageForm(const QString& code);

} // namespace vesk::check

#endif
