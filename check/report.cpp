// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <check/report.hpp>
#include <tuple>
#include <utility>

namespace vesk::check
{

Report::Report(const Options& options)
{
  for (const Rule& rule : rules())
  {
    const auto asked = options.severities.find(rule.tag);
    severities.push_back(asked == options.severities.end() ? rule.severity : asked->second);
  }
}

void Report::add(RuleId id, const QString& message, int line, int column, const QString& place)
{
  if (isAsked(id))
  {
    findings.push_back(
        {&ruleOf(id), severityOf(id), message.toStdString(), line, column, place.toStdString()});
  }
}

std::vector<Finding> Report::take()
{
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& left, const Finding& right) {
                     return std::tie(left.line, left.column) < std::tie(right.line, right.column);
                   });
  return std::move(findings);
}

QString cut(const QString& name)
{
  constexpr int most = 80;
  if (name.size() <= most)
  {
    return name;
  }
  const bool isWithinPair = name.at(most - 2).isHighSurrogate();
  return name.left(isWithinPair ? most - 2 : most - 1) + QChar(0x2026);
}

QString quoted(const QString& text)
{
  QString shown = cut(text);
  for (QChar& character : shown)
  {
    if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
        character == QChar::ParagraphSeparator)
    {
      character = QLatin1Char(' ');
    }
  }
  return '"' + shown + '"';
}

} // namespace vesk::check
