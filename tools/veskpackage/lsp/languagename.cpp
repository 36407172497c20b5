// SPDX-License-Identifier: Apache-2.0
#include "lsp/languagename.hpp"

#include <QLocale>
#include <QMap>
#include <QStringList>

namespace tool::lsp
{
namespace
{
/// What people call a script that tells forms of a language apart; empty for others.
QString scriptNameOf(const QString& code)
{
  static const QMap<QString, QString> names{{QStringLiteral("Arab"), QStringLiteral("Arabic")},
                                            {QStringLiteral("Cyrl"), QStringLiteral("Cyrillic")},
                                            {QStringLiteral("Hans"), QStringLiteral("Simplified")},
                                            {QStringLiteral("Hant"), QStringLiteral("Traditional")},
                                            {QStringLiteral("Latn"), QStringLiteral("Latin")}};
  return names.value(code);
}
} // namespace

std::string languageNameOf(std::string_view code)
{
  constexpr std::size_t longest = 64;
  if (code.size() > longest)
  {
    return {};
  }
  const QStringList parts = QString::fromUtf8(code.data(), static_cast<int>(code.size()))
                                .replace('-', '_')
                                .section('.', 0, 0)
                                .section('@', 0, 0)
                                .split('_');
  // For what it does not know the toolkit gives another locale, so what it gives is compared.
  const QLocale locale(parts.join('_'));
  const QLocale language(parts.front());
  if (language.language() == QLocale::C ||
      language.name().section('_', 0, 0) != parts.front().toLower())
  {
    return {};
  }
  const QString name = QLocale::languageToString(language.language());
  QStringList further;
  if (parts.size() > 1 && !scriptNameOf(parts[1]).isEmpty())
  {
    further << scriptNameOf(parts[1]);
  }
  if (parts.size() > 1 && locale.language() == language.language() &&
      locale.name().section('_', -1) == parts.back().toUpper())
  {
    further << QLocale::countryToString(locale.country());
  }
  return (further.isEmpty() ? name : name + " (" + further.join(", ") + ")").toStdString();
}

} // namespace tool::lsp
