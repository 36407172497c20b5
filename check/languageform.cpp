// SPDX-License-Identifier: Apache-2.0
#include <check/languageform.hpp>

#include <algorithm>

namespace vesk::check
{
namespace
{
bool isLetter(QChar c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool startsOwnName(QChar c) { return c == 'i' || c == 'I' || c == 'x' || c == 'X'; }

bool isLetterOrDigit(QChar c) { return isLetter(c) || (c >= '0' && c <= '9'); }
} // namespace

bool isLanguageForm(const QString& code)
{
  constexpr int longest = 8; // of the parts between "-" or "_"
  const QChar* const end = code.end();
  // What a locale adds behind "." or "@" is of any form.
  const QChar* const partsEnd =
      std::find_if(code.begin(), end, [](QChar c) { return c == '.' || c == '@'; });
  const QChar* part = code.begin();
  for (bool isFirst = true;; isFirst = false)
  {
    const QChar* const partEnd =
        std::find_if(part, partsEnd, [](QChar c) { return c == '-' || c == '_'; });
    const auto size = partEnd - part;
    // The language itself has two or three letters; "i" and "x" stand before names of one's own.
    const bool isPart =
        isFirst ? std::all_of(part, partEnd, isLetter) &&
                      (size == 2 || size == 3 ||
                       (size == 1 && partEnd != partsEnd && startsOwnName(*part)))
                : size >= 1 && size <= longest && std::all_of(part, partEnd, isLetterOrDigit);
    if (!isPart)
    {
      return false;
    }
    if (partEnd == partsEnd)
    {
      return std::none_of(partsEnd, end, [](QChar c) { return c.isSpace(); });
    }
    part = partEnd + 1;
  }
}

} // namespace vesk::check
