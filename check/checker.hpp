// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CHECKER_HPP
#define CHECK_CHECKER_HPP

#include <check/elements.hpp>
#include <check/languages.hpp>
#include <check/mending.hpp>
#include <check/packagefiles.hpp>
#include <check/report.hpp>

#include <QHash>
#include <QSet>

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
  /// text; null where that is not known, or cannot be edited. \p draft is a text that the nodes stand in
  /// and that ends within elements; null where it is whole.
  Checker(const Node& first, const source::Document* edited, const Options& options,
          Report& findings, const source::Document* draft = nullptr);

  /// \p documentType is null when there is none.
  void check(const Node& documentType);

  /// Reports what is wrong with the node that the walk is at, or with a part of it.
  void report(RuleId id, const Subject& subject, const QString& message,
              std::optional<Mend> mend = std::nullopt)
  {
    if (counts(id, subject))
    {
      add(id, subject, message, std::move(mend));
    }
  }

  /// Notes a name for which a rule wants no other element; false when one had it before.
  bool isFirst(RuleId id, const QString& name);

  /// Looks up the program of a command line, as far as it lies in the package.
  void checkProgram(const Subject& commandLine, const QString& given);

  const PackageLanguages& languages() const { return packageLanguages; }
  const Mending& mends() const { return mending; }

private:
  /// Whether the finding may be gone when the rest of a draft has been written.
  bool mayComeYet(RuleId id, const Subject& subject) const;
  /// Whether an element of a draft has no end tag yet.
  bool isOpen(const Node& element) const;

  /// The two parts of a report, for a message or a mend that takes time to make.
  /// \{
  bool counts(RuleId id, const Subject& subject)
  {
    return !mayComeYet(id, subject) && found.count(id);
  }
  void add(RuleId id, const Subject& subject, const QString& message,
           std::optional<Mend> mend = std::nullopt);
  /// \}

  /// The children of an element.
  struct Siblings
  {
    const CheckedElement& checkedParent;
    QHash<QString, int> total = {};  ///< by steps in places
    QHash<QString, int> before = {}; ///< of the one that the walk is at
    std::set<QString> meant = {};    ///< by unknown ones, of the names that are not there
    std::map<const CheckedElement*, Node> last = {}; ///< before the one that the walk is at
  };

  /// Notes that the mend of the finding that was added last gives an entry of a list this key. It is
  /// no sure mend where another entry has it, or gets it: one of the two would be lost.
  void noteNewKey(const CheckedElement& entry, const QString& key);
  void dropMendsToSameKeys();

  // structure.cpp: what the readers skip or take for something else
  void checkElement(const Node& element, const CheckedElement& checked);
  void checkAttributes(const Node& element, const CheckedElement& checked);
  void checkPresence(const Node& element);
  void checkText(const Node& element);
  void checkMarkup(const Node& element);
  void checkCharacters(const Subject& subject, const QString& value);
  void checkChildren(const Node& element, const CheckedElement& checked);
  void checkChild(const Node& child, Siblings& siblings);
  void checkNoElement(const Node& node, const CheckedElement& parent);
  void reportNotKept(const Node& node);
  void reportNotKeptIn(const Node& text);

  // unknown.cpp: what the format does not have, or not there
  void checkUnknownAttributes(const Node& element, const CheckedElement& checked);
  void reportUnknownAttribute(const Node& element, const CheckedElement& checked,
                              const QString& name, std::set<QString>& meant);
  void reportUnknown(const Node& element, Siblings& siblings);
  void reportUnknownPermission(const Node& element, const CheckedElement& permissions);

  // repeats.cpp: what the format has once
  void checkRepeated(const Node& child, const CheckedElement& known, Siblings& siblings);
  void reportRepeated(const Node& child, const CheckedElement& known, const Siblings& siblings);
  std::optional<Mend> mergeIntoLast(const Node& child, const CheckedElement& known,
                                    const Siblings& siblings) const;

  // values.cpp: what the readers take as it is
  void checkValues(const Node& element, const CheckedElement& checked);
  void checkTextValue(const Node& element, const CheckedElement& checked);
  void checkAttribute(const Node& element, const CheckedElement& checked,
                      const CheckedAttribute& attribute);
  void checkNeededChildren(const Node& element, const Siblings& children);
  void reportMissing(const Node& element, const CheckedElement& checked,
                     const CheckedAttribute& attribute);
  void checkLanguage(const Subject& subject, const CheckedElement& checked, const QString& given);
  void checkRepeatedLanguage(const Subject& subject, const CheckedElement& checked,
                             const QString& language);
  void checkSeparator(const Subject& subject, const QString& language);
  void checkListed(const Subject& subject, const CheckedElement& checked, const QString& language);
  void checkUsual(const Subject& subject, const format::Entry& entry, const QString& given);
  void checkPath(const Subject& subject, bool isWhole, const QString& given);
  /// Whether there are blanks around a value that is not blank altogether.
  bool checkBlanks(const Subject& subject, const QString& given);

  struct NewKey
  {
    std::size_t finding;
    const CheckedElement* entry;
    QString key;
  };

  /// The names of entries seen so far, for lists whose entries must have different names.
  using Lists = std::map<const CheckedElement*, QSet<QString>>;

  const Node first; ///< of the document
  const Mending mending;
  PackageFiles files;
  Report& found;
  const source::Document* const unfinished; ///< null for a whole text
  std::vector<QString> steps;               ///< from the root to where the walk is
  PackageLanguages packageLanguages;
  LanguageCodes codes;
  /// The lists in the element that is being checked. One list can be spread over several elements.
  Lists lists;
  std::vector<NewKey> newKeys;           ///< in these
  std::map<RuleId, QSet<QString>> names; ///< that an element of the whole manifest had before
};

} // namespace vesk::check

#endif
