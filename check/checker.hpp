// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CHECKER_HPP
#define CHECK_CHECKER_HPP

#include <QDomElement>

#include <check/format.hpp>
#include <check/languages.hpp>
#include <check/report.hpp>
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

private:
  // structure.cpp: what the readers skip or take for something else
  void checkElement(const QDomElement& element, const Element& format);
  void checkAttributes(const QDomElement& element, const Element& format);
  void checkPresence(const QDomElement& element);
  void checkText(const QDomElement& element);
  void checkCharacters(const QDomElement& element, const QString& value, const QString& part = {});
  void checkChildren(const QDomElement& element, const Element& format);
  void checkChild(const QDomElement& child, const Element& parent, bool isRepeated);
  void checkNoElement(const QDomNode& node, const Element& parent);
  void reportNotKept(const QDomNode& node);
  void reportNotKeptIn(const QDomElement& text);
  void reportUnknown(const QDomElement& element, const Element& parent);

  // values.cpp: what they take as it is
  void checkValues(const QDomElement& element, const Element& format);
  void checkEntry(const QDomElement& entry, const Element& list);
  void checkLanguage(const QDomElement& entry, const QString& attribute, const QString& language,
                     const QString& list);
  void checkPath(const QDomElement& element, bool isWhole = true);
  /// Whether there is a file or folder of this path, or a file that only has an extension more.
  bool exists(const QString& path, bool isWhole);
  void checkService(const QDomElement& service);
  void checkVersions(const QDomElement& element, const QString& least, const QString& most);

  void report(RuleId id, const QDomNode& node, const QString& message, const QString& part = {});

  const QDomDocument& document;
  QString packageFolder;
  std::map<QString, std::set<QString>> filesWithoutExtension; ///< by folder; read once
  Report& found;
  std::vector<QString> steps; ///< from the root to where the walk is
  PackageLanguages packageLanguages;
  LanguageCodes codes;
  /// What each list of the element that is being checked has so far, by the name of the list, which
  /// can come in several elements.
  std::map<QString, std::set<QString>> lists;
};

} // namespace vesk::check

#endif
