// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CHECKER_HPP
#define CHECK_CHECKER_HPP

#include <check/elements.hpp>
#include <check/languages.hpp>
#include <check/mending.hpp>
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
  /// \p first is the first node of the document, that of its declaration or the like. \p edited is its
  /// text; null where that is not known, or cannot be edited.
  Checker(const Node& first, const source::Document* edited, const Options& options,
          Report& findings);

  /// \p documentType is null when there is none.
  void check(const Node& documentType);

  /// Reports what is wrong with the node that the walk is at, or with a part of it.
  void report(RuleId id, const Subject& subject, const QString& message,
              std::optional<Mend> mend = std::nullopt);

  const PackageLanguages& languages() const { return packageLanguages; }
  const Mending& mends() const { return mending; }

private:
  // structure.cpp: what the readers skip or take for something else
  void checkElement(const Node& element, const CheckedElement& checked);
  void checkAttributes(const Node& element, const CheckedElement& checked);
  void checkPresence(const Node& element);
  void checkText(const Node& element);
  void checkCharacters(const Subject& subject, const QString& value);
  void checkChildren(const Node& element, const CheckedElement& checked);
  void checkChild(const Node& child, const CheckedElement& parent, bool isRepeated);
  void checkNoElement(const Node& node, const CheckedElement& parent);
  void reportNotKept(const Node& node);
  void reportNotKeptIn(const Node& text);
  void reportUnknown(const Node& element, const CheckedElement& parent);

  // values.cpp: what the readers take as it is
  void checkValues(const Node& element, const CheckedElement& checked);
  void checkEntry(const Node& entry, const CheckedElement& checked);
  void checkLanguage(const Subject& subject, const CheckedElement& checked,
                     const QString& language);
  void checkListed(const Subject& subject, const CheckedElement& checked, const QString& language);
  void checkPath(const Node& element, const CheckedAttribute& attribute, const QString& path);
  /// Whether there is a file or folder at this path or, unless \p isWhole, a file whose path is
  /// this one with an extension added.
  bool findFile(const QString& path, bool isWhole);

  /// The names of entries seen so far, for lists whose entries must have different names.
  using Lists = std::map<const CheckedElement*, std::set<QString>>;

  const Node first; ///< of the document
  const Mending mending;
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
