// SPDX-License-Identifier: Apache-2.0
#include <check/report.hpp>
#include <check/stricttext.hpp>

namespace vesk::check
{

std::optional<Finding> repeatedUuid(const std::string& bytes, const std::string& other,
                                    const Options& options)
{
  const Rule& rule = ruleOf(RuleId::RepeatedUuid);
  const Severity severity = askedFor(rule, options);
  if (severity == Severity::Off)
  {
    return std::nullopt;
  }
  const std::string message = "the package in \"" +
                              visible(QString::fromStdString(other)).toStdString() +
                              "\" has the same uuid";
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
