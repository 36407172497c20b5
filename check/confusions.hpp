// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CONFUSIONS_HPP
#define CHECK_CONFUSIONS_HPP

#include <QString>

#include <vector>

namespace vesk::check
{

/// Of some names of the format those for which another one is usually written, as "id" for "uuid".
std::vector<QString> usuallyMeant(const QString& written, const std::vector<QString>& known);

/// Of some names of the format those that what is written may stand for: one that differs only in the
/// case of letters; else those that are usually meant; else the nearest; else those for which something
/// near is usually written. Some of these are wrong.
std::vector<QString> probablyMeant(const QString& written, const std::vector<QString>& known);

/// What a name that the format does not have may mean.
struct Meaning
{
  std::vector<QString> probable; ///< as probablyMeant() has it
  std::vector<QString> missing;  ///< of these, what is not there under its own name

  bool isOne() const { return probable.size() == 1 && missing.size() == 1; }
};

/// Whether a name or value stands for one of the format beyond doubt: it is the same, or differs only
/// in the case of letters and by a slip of one letter, or is usually written for it.
bool isSurelyMeant(const QString& written, const QString& name);

/// Whether two names are the same but for the case of letters.
inline bool isOtherCase(const QString& written, const QString& name)
{
  return written.compare(name, Qt::CaseInsensitive) == 0;
}

} // namespace vesk::check

#endif
