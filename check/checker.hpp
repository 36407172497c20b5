// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CHECKER_HPP
#define CHECK_CHECKER_HPP

#include <check/elements.hpp>
#include <check/languages.hpp>
#include <check/report.hpp>

#include <QDomElement>

#include <map>
#include <set>
#include <vector>

namespace vesk::check
{

/// Walks the tree of a manifest beside the format.
class Checker
{
public:
  Checker(const QDomDocument& checked, const Options& options, Report& findings);

  void check();

  /// Reports what is wrong with the node that the walk is at, or with a part of it, such as
  /// "@path".
  void report(RuleId id, const QDomNode& node, const QString& message, const QString& part = {});

  const PackageLanguages& languages() const { return packageLanguages; }

private:
  // structure.cpp: what the readers skip or take for something else
  void checkElement(const QDomElement& element, const CheckedElement& checked);
  void checkAttributes(const QDomElement& element, const CheckedElement& checked);
  void checkPresence(const QDomElement& element);
  void checkText(const QDomElement& element);
  void checkCharacters(const QDomElement& element, const QString& value, const QString& part = {});
  void checkChildren(const QDomElement& element, const CheckedElement& checked);
  void checkChild(const QDomElement& child, const CheckedElement& parent, bool isRepeated);
  void checkNoElement(const QDomNode& node, const CheckedElement& parent);
  void reportNotKept(const QDomNode& node);
  void reportNotKeptIn(const QDomElement& text);
  void reportUnknown(const QDomElement& element, const CheckedElement& parent);

  // values.cpp: what the readers take as it is
  void checkValues(const QDomElement& element, const CheckedElement& checked);
  void checkEntry(const QDomElement& entry, const CheckedElement& checked);
  void checkLanguage(const QDomElement& entry, const CheckedElement& checked,
                     const QString& language, const QString& part);
  void checkListed(const QDomElement& entry, const CheckedElement& checked,
                   const QString& language);
  void checkPath(const QDomElement& element, const CheckedAttribute& attribute,
                 const QString& path);
  /// Whether there is a file or folder at this path or, unless \p isWhole, a file whose path is
  /// this one with an extension added.
  bool findFile(const QString& path, bool isWhole);

  /// The names of entries seen so far, for lists whose entries must have different names.
  using Lists = std::map<const CheckedElement*, std::set<QString>>;

  const QDomDocument& document;
  QString packageFolder;
  std::map<QString, std::set<QString>> filesWithoutExtension; ///< by folder; read once
  Report& found;
  std::vector<QString> steps; ///< from the root to where the walk is
  PackageLanguages packageLanguages;
  LanguageCodes codes;
  /// The lists in the element that is being checked. One list can be spread over several elements.
  Lists lists;
};

} // namespace vesk::check

#endif
