// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_LANGUAGES_HPP
#define CHECK_LANGUAGES_HPP

#include <check/node.hpp>
#include <package/languagecodes.hpp>

#include <QSet>
#include <QString>

#include <list>
#include <set>
#include <string>

namespace vesk::check
{

/// The languages that a package lists and has a name in.
class PackageLanguages
{
public:
  explicit PackageLanguages(const Node& root);

  /// Whether trimming keeps a text in this language. Names and descriptions are trimmed to the
  /// description languages, other texts to the supported ones; true when none of these are listed.
  /// \{
  bool isDescribed(const QString& language) const;
  bool isSupported(const QString& language) const;
  /// \}

  /// Whether the package has a name in the language or a regional variant of it.
  bool isNamed(const QString& language) const;

private:
  std::list<std::string> described;
  std::list<std::string> supported;
  LanguagePrefixes describedPrefixes;
  LanguagePrefixes supportedPrefixes;
  std::set<QString> named;
};

/// Finds codes with another separator than the first one: "-" instead of "_", or the reverse.
class LanguageCodes
{
public:
  /// Takes a further code. When it is such a code, and has not been taken before, gives it with the
  /// separator of the first; else empty.
  QString alike(const QString& language);

private:
  QChar separator; // of the first code that has one
  QSet<QString> odd;
};

} // namespace vesk::check

#endif
