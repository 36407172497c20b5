// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <check/languageform.hpp>

#include <QRegularExpression>

using vesk::check::isLanguageForm;

TEST(LanguageForm, IsThatOfCodes)
{
  for (const char* const code :
       {"en", "EN", "deu", "en_US", "en-us", "zh-Hant-TW", "zh_Hant_TW", "es-419", "x-private",
        "X_a", "i-klingon", "de_DE.UTF-8", "de_DE.UTF-8@euro", "de@euro", "de-1996", "sl-nedis",
        "en-a-bbb-x-a-ccc"})
  {
    EXPECT_TRUE(isLanguageForm(code)) << code;
  }
  for (const char* const text :
       {"",          "e",   "x",         "i",           "x-",      "-",     "_US",
        "en_",       "en-", "en--US",    "en_-US",      "English", "engl",  "e1",
        "en US",     " en", "en ",       "en\n",        "en,fr",   "en/US", "en-abcdefghi",
        "a-private", "x.y", "d\xC3\xA9", "en-\xC3\xA9", ".UTF-8",  "@euro", "en.\xC2\xA0",
        "*"})
  {
    EXPECT_FALSE(isLanguageForm(text)) << text;
  }
}

// All short texts of the letters that matter.
TEST(LanguageForm, IsThatOfAPattern)
{
  const QRegularExpression pattern(
      QRegularExpression::anchoredPattern(
          "([A-Za-z]{2,3}|[iIxX](?=[-_]))([-_][A-Za-z0-9]{1,8})*([.@]\\S*)?"),
      QRegularExpression::UseUnicodePropertiesOption);
  const QString letters = QString::fromUtf8("axZ7-_.@ \xC3\xA9");
  std::vector<QString> texts{""};
  for (std::size_t i = 0; i < texts.size() && texts.size() < 100000; ++i)
  {
    for (const QChar letter : letters)
    {
      texts.push_back(texts[i] + letter);
    }
  }
  for (const char* const part : {"aaaaaaa", "12345678", "aaaaaaaaa"})
  {
    for (std::size_t i = 0; i < 1000; ++i)
    {
      texts.push_back(QString("en-") + part + texts[i]);
    }
  }
  for (const QString& text : texts)
  {
    EXPECT_EQ(isLanguageForm(text), pattern.match(text).hasMatch()) << text.toStdString();
  }
}
