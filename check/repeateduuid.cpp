// SPDX-License-Identifier: Apache-2.0
#include <check/report.hpp>
#include <check/stricttext.hpp>
#include <source/lines.hpp>

#include <algorithm>

namespace vesk::check
{
namespace
{
Position positionOf(std::size_t offset, const source::Lines& lines)
{
  const source::Place place = lines.placeOf(offset);
  return {place.line, place.column, place.utf16Column, offset};
}

/// On one line.
QString named(const std::string& file)
{
  QString name = QString::fromStdString(file);
  std::replace_if(
      name.begin(), name.end(), [](QChar c) { return c.category() == QChar::Other_Control; },
      QLatin1Char(' '));
  return '"' + name + '"';
}
} // namespace

std::optional<Finding> repeatedUuid(const std::string& bytes, const std::string& other,
                                    const Options& options)
{
  const Rule& rule = ruleOf(RuleId::RepeatedUuid);
  const auto asked = options.severities.find(rule.tag);
  const Severity severity = asked == options.severities.end() ? rule.severity : asked->second;
  if (severity == Severity::Off)
  {
    return std::nullopt;
  }
  const std::string message = "the package in " + named(other).toStdString() + " has the same uuid";
  Finding finding{&rule, severity, message, {}, {}, "/package/@uuid"};
  const source::Document document = strictTextOfBytes(bytes).document;
  const source::Node* const root = document.root();
  const source::Attribute* const uuid = root == nullptr ? nullptr : root->attribute("uuid");
  if (uuid != nullptr) // else it is no strict XML up to here, though the readers take it
  {
    const std::string_view name = root->name();
    finding.place =
        '/' + cut(QString::fromUtf8(name.data(), static_cast<int>(name.size()))).toStdString() +
        "/@uuid";
    const source::Lines lines(document.text());
    finding.begin = positionOf(uuid->valueRange().begin, lines);
    finding.end = positionOf(uuid->valueRange().end, lines);
  }
  return finding;
}

} // namespace vesk::check
