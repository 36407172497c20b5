// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_REPORT_HPP
#define CHECK_REPORT_HPP

#include <check/rules.hpp>
#include <check/subject.hpp>

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

  /// Counts a finding of this rule; false when it is not to be added.
  bool count(RuleId id);

  void add(RuleId id, const QString& message, const Spot& spot, const QString& place = {},
           std::optional<Mend> mend = std::nullopt);

  /// How many have been added.
  std::size_t size() const { return findings.size(); }
  /// Takes back that a finding can be mended, by its number from 0.
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

/// A name or value from a manifest for a message: quoted, cut where it is long, without control
/// characters.
QString quoted(const QString& text);

/// Names, quoted, with commas between them; or with "or" before the last.
/// \{
QString listOf(const std::vector<QString>& names);
QString choiceOf(const std::vector<QString>& names);
/// \}

/// A name for a place, cut where it is long.
QString cut(const QString& name);

} // namespace vesk::check

#endif
