// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_CHECKER_HPP
#define CHECK_CHECKER_HPP

#include <check/confusions.hpp>
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
    if (countOne(id, subject))
    {
      add(id, subject, message, std::move(mend));
    }
  }

  /// Notes a name for which a rule wants no other element; false when one had it before.
  bool isFirst(RuleId id, const QString& name);

  /// Whether the element that is being checked has this attribute or child under a wrong name, which has
  /// been reported: that it is missing needs no report of its own.
  bool isMisspelt(const QString& name) const { return misspelt.count(name) != 0; }

  /// Looks up the program of a command line, as far as it lies in the package.
  void checkProgram(const Subject& commandLine, const QString& given);

  const PackageLanguages& languages() const { return packageLanguages; }
  const Mending& mends() const { return mending; }

private:
  /// Whether the finding may be gone when the rest of a draft has been written.
  bool mayComeYet(RuleId id, const Subject& subject) const;
  /// Whether an element of a draft has no end tag yet.
  bool isOpen(const Node& element) const;

  /// The two parts of a report, for a message or a mend that takes time to make: the first counts a
  /// finding, and is false when it is not to be added; the second gives its number among those added.
  /// \{
  bool countOne(RuleId id, const Subject& subject)
  {
    return !mayComeYet(id, subject) && found.countOne(id);
  }
  std::size_t add(RuleId id, const Subject& subject, const QString& message,
                  std::optional<Mend> mend = std::nullopt);
  /// \}

  /// Of the children of one name that the format does not have there.
  struct UnknownChild
  {
    QString orderToMove; ///< where the format has it elsewhere
    Meaning meaning;
  };

  /// The children of an element.
  struct Siblings
  {
    const CheckedElement& checkedParent;
    QHash<QString, int> total = {};               ///< by steps in places
    QHash<QString, int> before = {};              ///< of the one that the walk is at
    std::map<QString, UnknownChild> unknown = {}; ///< by steps; learned when the first is met
    std::map<QString, int> rivals = {}; ///< how many of these may mean one that is missing
    std::map<const CheckedElement*, Node> last = {}; ///< before the one that the walk is at
  };

  /// Notes that the mend of a finding gives an entry of a list this key. It is no sure mend where
  /// another entry has it, or gets it: one of the two would be lost.
  void noteNewKey(std::size_t finding, const CheckedElement& entry, const QString& key);
  void dropMendsToSameKeys();

  /// A node's step in a place, without its number.
  static QString stepOf(const Node& node);

  // structure.cpp: what the readers skip or take for something else
  void checkElement(const Node& element, const CheckedElement& checked);
  /// These add the names that are missing and meant by wrong ones.
  /// \{
  void checkAttributes(const Node& element, const CheckedElement& checked,
                       std::set<QString>& missing);
  void checkChildren(const Node& element, const CheckedElement& checked,
                     std::set<QString>& missing);
  /// \}
  void checkPresence(const Node& element);
  void checkText(const Node& element);
  void checkMarkup(const Node& element);
  void checkCharacters(const Subject& subject, const QString& value);
  void checkChild(const Node& child, Siblings& siblings);
  void checkNoElement(const Node& node, const CheckedElement& parent);
  void reportNotKept(const Node& node);
  void reportNotKeptIn(const Node& text);

  // unknown.cpp: what the format does not have, or not there
  void checkUnknownAttributes(const Node& element, const CheckedElement& checked,
                              std::set<QString>& missing);
  void reportUnknownAttribute(const Node& element, const CheckedElement& checked,
                              const QString& name, const Meaning& meaning, bool isRivalled);
  void learnMeanings(Siblings& siblings);
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
  void checkNeededChildren(const Node& element, const Siblings& children,
                           const std::set<QString>& missing);
  void reportMissing(const Node& element, const CheckedElement& checked,
                     const CheckedAttribute& attribute);
  void checkLanguage(const Subject& subject, const CheckedElement& checked, const QString& given);
  void checkRepeatedLanguage(const Subject& subject, const CheckedElement& checked,
                             const QString& language);
  void checkSeparator(const Subject& subject, const QString& language);
  void checkListed(const Subject& subject, const CheckedElement& checked, const QString& language);
  void checkUsual(const Subject& subject, const format::Entry& entry, const QString& given);
  void checkPath(const Subject& subject, bool isWhole, const QString& given);
  void checkBlanks(const Subject& subject, const QString& given);
  /// Gives the number of the finding; none where it is not listed.
  std::optional<std::size_t> reportBlanks(const Subject& subject, const QString& given);

  /// False when it is there already.
  static bool insert(QSet<QString>& set, const QString& value)
  {
    const int size = set.size();
    set.insert(value);
    return set.size() != size;
  }

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
  std::set<QString> misspelt;               ///< see isMisspelt()
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
