// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_REPORT_HPP
#define CHECK_REPORT_HPP

#include <check/rules.hpp>
#include <check/subject.hpp>
#include <source/lines.hpp>

#include <optional>
#include <string_view>
#include <vector>

namespace vesk::check
{

/// Where a finding is: a part of the text or, where that is not known, the place that the toolkit
/// gives, with the column in UTF-16 code units; 0 where there is none.
struct Spot
{
  std::optional<source::Range> range;
  int line = 0;
  int column = 0;
  bool isText = false; ///< of which blanks at the ends are not shown
};

/// Collects findings, at the severities that the options ask for.
class Report
{
public:
  explicit Report(const Options& options);

  /// Whether findings of this rule are asked for.
  bool isOn(RuleId id) const { return severityOf(id) != Severity::Off; }
  /// Counts a further finding of this rule; false when it is not to be added.
  bool countOne(RuleId id);

  /// Gives the number of the finding among those that are added, from 0.
  std::size_t add(RuleId id, const QString& message, const Spot& spot, const QString& place = {},
                  std::optional<Mend> mend = std::nullopt);

  /// Takes back that a finding can be mended, by its number.
  void dropMend(std::size_t finding) { findings[finding].mend.reset(); }

  /// All, in document order. Where more of a rule were counted than are listed, the last one says so.
  /// \p text is that which the ranges are of.
  std::vector<Finding> take(std::string_view text);

private:
  Severity severityOf(RuleId id) const { return severities[static_cast<std::size_t>(id)]; }

  const std::size_t most;
  std::vector<Severity> severities; // by RuleId
  std::vector<std::size_t> counts;  // by RuleId
  std::vector<Finding> findings;
  std::vector<Spot> spots; // of the findings
};

/// A name or value from a manifest for a message: quoted, cut where it is long, and visible.
QString quoted(const QString& text);

/// A text on one line: blanks in place of control characters, and codes as "<U+200B>" in place of those
/// that nobody sees, or that turn the direction of writing.
QString visible(const QString& text);

Position positionOf(std::size_t offset, const source::Lines& lines);

/// Names, quoted, with commas between them; or with "or" before the last.
/// \{
QString listOf(const std::vector<QString>& names);
QString choiceOf(const std::vector<QString>& names);
/// \}

/// A name for a place, cut where it is long.
QString cut(const QString& name);

} // namespace vesk::check

#endif
