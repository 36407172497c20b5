// SPDX-License-Identifier: Apache-2.0
#include <package/xml/parsing.hpp>
#include <package/xml/text.hpp>

#include <QDomDocument>
#include <QFile>

#include <check/checker.hpp>

namespace vesk::check
{
namespace
{
std::vector<Finding> unreadable(const QString& why, const Options& options)
{
  Report report(options);
  report.add(RuleId::Unreadable, why);
  return report.take();
}

std::vector<Finding> checkParsed(bool isParsed, const SyntaxError& error,
                                 const QDomDocument& document, const Options& options)
{
  if (isParsed)
  {
    return checkDocument(document, options);
  }
  Report report(options);
  report.add(error.isBeyondLimits ? RuleId::BeyondLimits : RuleId::NotWellFormed, error.message,
             error.line, error.column);
  return report.take();
}
} // namespace

std::vector<Finding> checkFile(const std::string& path, const Options& options)
{
  QFile file(toQString(path));
  if (!file.open(QIODevice::ReadOnly))
  {
    return unreadable(QStringLiteral("cannot be opened for reading: ") + file.errorString(),
                      options);
  }
  return checkDevice(file, options);
}

std::vector<Finding> checkDevice(QIODevice& device, const Options& options)
{
  QDomDocument document;
  SyntaxError error;
  const bool isParsed = parseXml(device, document, error);
  const auto* const file = qobject_cast<const QFileDevice*>(&device);
  if (file != nullptr && file->error() != QFileDevice::NoError)
  {
    return unreadable(QStringLiteral("cannot be read: ") + file->errorString(), options);
  }
  return checkParsed(isParsed, error, document, options);
}

std::vector<Finding> checkText(const std::string& text, const Options& options)
{
  QDomDocument document;
  SyntaxError error;
  const bool isParsed = parseXml(toQString(text), document, error);
  return checkParsed(isParsed, error, document, options);
}

std::vector<Finding> checkDocument(const QDomDocument& document, const Options& options)
{
  Report report(options);
  Checker(document, options, report).check();
  return report.take();
}

} // namespace vesk::check
