// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CHECKER_HPP
#define CHECK_CHECKER_HPP

#include <QDomElement>

#include <check/format.hpp>
#include <check/languages.hpp>
#include <check/report.hpp>
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
  void checkChildren(const QDomElement& element, const Element& format);
  void checkChild(const QDomElement& child, const Element& parent, bool isRepeated);
  void checkNoElement(const QDomNode& node, const Element& parent);
  void reportNotKept(const QDomNode& node);
  void reportUnknown(const QDomElement& element, const Element& parent);

  // values.cpp: what they take as it is
  void checkValues(const QDomElement& element, const Element& format);
  void checkEntry(const QDomElement& entry, const Element& list);
  void checkLanguage(const QDomElement& entry, const QString& attribute, const QString& language);
  void checkPath(const QDomElement& element, bool isWhole = true);
  void checkService(const QDomElement& service);
  void checkVersions(const QDomElement& element, const QString& least, const QString& most);

  void report(RuleId id, const QDomNode& node, const QString& message, const QString& part = {});

  const QDomDocument& document;
  QString packageFolder;
  Report& found;
  std::vector<QString> steps; ///< from the root to where the walk is
  PackageLanguages packageLanguages;
  LanguageCodes codes;
  std::set<QString> listLanguages; ///< of the list of texts or the dialog that is being checked
};

} // namespace vesk::check

#endif
