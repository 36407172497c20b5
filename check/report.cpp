// SPDX-License-Identifier: Apache-2.0
#include <check/report.hpp>

#include <algorithm>
#include <tuple>
#include <utility>

namespace vesk::check
{
namespace
{
// A finding takes about a hundred times the memory of the text that causes it.
constexpr std::size_t mostOfARule = 1000;
} // namespace

Report::Report(const Options& options)
{
  for (const Rule& rule : rules())
  {
    const auto asked = options.severities.find(rule.tag);
    severities.push_back(asked == options.severities.end() ? rule.severity : asked->second);
  }
  counts.resize(severities.size());
}

bool Report::count(RuleId id)
{
  return severityOf(id) != Severity::Off && ++counts[static_cast<std::size_t>(id)] <= mostOfARule;
}

void Report::add(RuleId id, const QString& message, int line, int column, const QString& place)
{
  const Position position{line, column, column, 0};
  findings.push_back({&ruleOf(id), severityOf(id), message.toStdString(), position, position,
                      place.toStdString()});
}

std::vector<Finding> Report::take()
{
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& left, const Finding& right) {
                     return std::tie(left.begin.line, left.begin.column) <
                            std::tie(right.begin.line, right.begin.column);
                   });
  for (std::size_t id = 0; id < counts.size(); ++id)
  {
    if (counts[id] > mostOfARule)
    {
      const auto last = std::find_if(findings.rbegin(), findings.rend(),
                                     [id](const Finding& finding)
                                     { return finding.rule == &ruleOf(static_cast<RuleId>(id)); });
      last->message +=
          "; " + std::to_string(counts[id] - mostOfARule) + " more of these are left out";
    }
  }
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
