// SPDX-License-Identifier: Apache-2.0
#include <check/checker.hpp>
#include <package/xml/parsing.hpp>
#include <package/xml/text.hpp>

#include <QDomDocument>
#include <QFile>

namespace vesk::check
{
namespace
{
/// The one finding that there is without a tree.
std::vector<Finding> single(RuleId id, const QString& message, const Options& options, int line = 0,
                            int column = 0)
{
  Report report(options);
  if (report.count(id))
  {
    report.add(id, message, line, column);
  }
  return report.take();
}

std::vector<Finding> unreadable(const QString& why, const Options& options)
{
  return single(RuleId::Unreadable, why, options);
}

std::vector<Finding> checkParsed(bool isParsed, const SyntaxError& error,
                                 const QDomDocument& document, const Options& options)
{
  if (isParsed)
  {
    return checkDocument(document, options);
  }
  return single(error.isBeyondLimits ? RuleId::BeyondLimits : RuleId::NotWellFormed, error.message,
                options, error.line, error.column);
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
