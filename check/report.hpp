// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_REPORT_HPP
#define CHECK_REPORT_HPP

#include <check/rules.hpp>

#include <QDomNode>

#include <vector>

namespace vesk::check
{

/// Collects findings, at the severities that the options ask for.
class Report
{
public:
  explicit Report(const Options& options);

  /// Counts a finding of this rule; false when it is not to be added.
  bool count(RuleId id);

  void add(RuleId id, const QString& message, int line = 0, int column = 0,
           const QString& place = {});

  /// All, in document order. Where more of a rule were counted than are listed, the last one says so.
  std::vector<Finding> take();

private:
  Severity severityOf(RuleId id) const { return severities[static_cast<std::size_t>(id)]; }

  std::vector<Severity> severities; // by RuleId
  std::vector<std::size_t> counts;  // by RuleId
  std::vector<Finding> findings;
};

/// A name or value from a manifest for a message: quoted, cut where it is long, without control
/// characters.
QString quoted(const QString& text);

/// A name for a place, cut where it is long.
QString cut(const QString& name);

} // namespace vesk::check

#endif
