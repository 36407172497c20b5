// SPDX-License-Identifier: Apache-2.0
#include <check/report.hpp>

#include <QStringList>

#include <algorithm>
#include <tuple>
#include <utility>

namespace vesk::check
{
namespace
{
Position positionOf(const Spot& spot) { return {spot.line, spot.column, spot.column, 0}; }

source::Range withoutBlanksAtEnds(const source::Range& range, std::string_view text)
{
  constexpr std::string_view blanks = " \t\r\n";
  const std::string_view part = text.substr(range.begin, range.size());
  const std::size_t first = part.find_first_not_of(blanks);
  const std::size_t last = part.find_last_not_of(blanks);
  return first == std::string_view::npos
             ? range
             : source::Range{range.begin + static_cast<std::uint32_t>(first),
                             range.begin + static_cast<std::uint32_t>(last) + 1};
}
} // namespace

Position positionOf(std::size_t offset, const source::Lines& lines)
{
  const source::Place place = lines.placeOf(offset);
  return {place.line, place.column, place.utf16Column, offset};
}

Report::Report(const Options& options) : most(std::max(options.mostOfARule, std::size_t{1}))
{
  for (const Rule& rule : rules())
  {
    severities.push_back(askedFor(rule, options));
  }
  counts.resize(severities.size());
}

bool Report::countOne(RuleId id)
{
  return isOn(id) && ++counts[static_cast<std::size_t>(id)] <= most;
}

std::size_t Report::add(RuleId id, const QString& message, const Spot& spot, const QString& place,
                        std::optional<Mend> mend)
{
  findings.push_back({&ruleOf(id),
                      severityOf(id),
                      message.toStdString(),
                      {},
                      {},
                      place.toStdString(),
                      std::move(mend)});
  spots.push_back(spot);
  return findings.size() - 1;
}

std::vector<Finding> Report::take(std::string_view text)
{
  if (findings.empty())
  {
    return {};
  }
  const source::Lines lines(text);
  for (std::size_t i = 0; i < findings.size(); ++i)
  {
    const Spot& spot = spots[i];
    if (!spot.range)
    {
      findings[i].begin = findings[i].end = positionOf(spot);
      continue;
    }
    const source::Range range = spot.isText ? withoutBlanksAtEnds(*spot.range, text) : *spot.range;
    findings[i].begin = positionOf(range.begin, lines);
    findings[i].end = positionOf(range.end, lines);
  }
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& left, const Finding& right)
                   {
                     return std::tie(left.begin.line, left.begin.utf16Column) <
                            std::tie(right.begin.line, right.begin.utf16Column);
                   });
  for (std::size_t id = 0; id < counts.size(); ++id)
  {
    if (counts[id] > most && most > 0)
    {
      const auto last = std::find_if(findings.rbegin(), findings.rend(),
                                     [id](const Finding& finding)
                                     { return finding.rule == &ruleOf(static_cast<RuleId>(id)); });
      // In these words, since the pages of the Python package look for the number.
      last->message += "; " + std::to_string(counts[id] - most) + " more of these are left out";
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

QString quoted(const QString& text) { return '"' + visible(cut(text)) + '"'; }

QString visible(const QString& text)
{
  QString shown;
  for (const QChar character : text)
  {
    switch (character.category())
    {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
      shown += QLatin1Char(' ');
      break;
    case QChar::Other_Format:
      shown += QStringLiteral("<U+%1>").arg(character.unicode(), 4, 16, QLatin1Char('0')).toUpper();
      break;
    default:
      shown += character;
      break;
    }
  }
  return shown;
}

QString listOf(const std::vector<QString>& names)
{
  QStringList all;
  for (const QString& name : names)
  {
    all += quoted(name);
  }
  return all.join(QStringLiteral(", "));
}

QString choiceOf(const std::vector<QString>& names)
{
  const QString last = names.empty() ? QString() : quoted(names.back());
  return names.size() < 2
             ? last
             : listOf({names.begin(), names.end() - 1}) + QStringLiteral(" or ") + last;
}

} // namespace vesk::check
