// SPDX-License-Identifier: Apache-2.0
#include "lsp/languagename.hpp"

#include <QLocale>
#include <QStringList>

namespace tool::lsp
{
namespace
{
/// The name with a blank before each capital, as the toolkit has it run together for scripts.
QString inWords(const QString& name)
{
  QString words;
  for (const QChar c : name)
  {
    if (c.isUpper() && !words.isEmpty() && !words.endsWith(' '))
    {
      words += ' ';
    }
    words += c;
  }
  return words;
}
} // namespace

std::string languageNameOf(std::string_view code)
{
  constexpr std::size_t longest = 64;
  if (code.size() > longest)
  {
    return {};
  }
  QStringList parts = QString::fromUtf8(code.data(), static_cast<int>(code.size()))
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
  if (locale.language() == language.language())
  {
    const QString script = locale.bcp47Name().section('-', 1, 1);
    if (parts.size() > 1 && parts[1].size() == 4 && script == parts[1])
    {
      further << inWords(QLocale::scriptToString(locale.script()));
    }
    if (parts.size() > 1 && locale.name().section('_', -1) == parts.back().toUpper())
    {
      further << QLocale::countryToString(locale.country());
    }
  }
  return (further.isEmpty() ? name : name + " (" + further.join(", ") + ")").toStdString();
}

} // namespace tool::lsp
