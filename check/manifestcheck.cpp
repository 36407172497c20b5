// SPDX-License-Identifier: Apache-2.0
#include <check/checker.hpp>
#include <check/passedover.hpp>
#include <check/stricttext.hpp>
#include <package/xml/manifesttree.hpp>
#include <package/xml/text.hpp>

#include <QBuffer>

namespace vesk::check
{
namespace
{
std::vector<Finding> checkTree(const source::Document& document, const Options& options,
                               Report& report)
{
  Checker(Node(&*document.nodes().begin()), &document, options, report).check(Node(nullptr));
  return report.take(document.text());
}

/// Findings in the toolkit's tree. \p twins are null where its text is not known, \p edited where it
/// cannot be edited.
void checkTree(const QDomDocument& document, const Twins* twins, const source::Document* edited,
               const Options& options, Report& report)
{
  const QDomDocumentType type = document.doctype();
  const QDomNode typeOrNull = type.name().isEmpty() ? QDomNode() : QDomNode(type);
  Checker(Node(document.firstChild(), twins, twins != nullptr ? 1 : 0), edited, options, report)
      .check(Node(typeOrNull, twins, twins != nullptr ? twins->documentType() : 0));
}

void reportNotStrict(const source::Error& error, bool isEncodingUnknown, Report& report)
{
  const RuleId id = isEncodingUnknown ? RuleId::UnknownEncoding : RuleId::NotStrict;
  if (report.countOne(id))
  {
    report.add(id,
               visible(toQString(error.message)) +
                   (isEncodingUnknown
                        ? QStringLiteral("; write the one that the text is in, such as UTF-8")
                        : QStringLiteral("; the readers take it, many other programs do not")),
               {error.range});
  }
}

std::vector<Finding> checkTree(const QDomDocument& document, const StrictText& text,
                               const Options& options, Report& report)
{
  if (text.error)
  {
    reportNotStrict(*text.error, text.isEncodingUnknown, report);
  }
  const Twins twins(document, text.document);
  checkTree(document, &twins, text.isEditable ? &text.document : nullptr, options, report);
  return report.take(text.document.text());
}

/// What stops the readers of a manifest that none takes; \p strictly is what strict XML says of it, alone
/// in a draft.
void reportStop(RuleId id, const LoadError& error, const std::optional<source::Error>& strictly,
                bool isDraft, Report& report)
{
  if (!report.countOne(id))
  {
    return;
  }
  const QString message = visible(toQString(error.message));
  const bool isExplained = strictly && id != RuleId::BeyondLimits;
  Spot spot{{}, error.line, error.column};
  spot.range = strictly ? std::optional(strictly->range) : std::nullopt;
  const QString explained = isExplained ? visible(toQString(strictly->message)) : message;
  report.add(id,
             isExplained && !isDraft
                 ? QStringLiteral("%1 (the readers stop in line %2, column %3: %4)")
                       .arg(explained)
                       .arg(error.line)
                       .arg(error.column)
                       .arg(message)
                 : explained,
             spot);
}

/// The findings of a manifest that no reader takes. \p text is null where it is not known.
void reportRefusal(const LoadError& error, const StrictText* text, bool isDraft, Report& report)
{
  const RuleId id = error.line == 0        ? RuleId::Unreadable
                    : error.isBeyondLimits ? RuleId::BeyondLimits
                                           : RuleId::NotWellFormed;
  if (text == nullptr)
  {
    reportStop(id, error, std::nullopt, isDraft, report);
    return;
  }
  const bool tellsApart = id == RuleId::NotWellFormed && !text->isEncodingUnknown && !isDraft;
  const StrictFaults faults =
      tellsApart ? strictFaults(*text, error) : StrictFaults{{}, text->error};
  for (const source::Error& fault : faults.passedOver)
  {
    reportNotStrict(fault, false, report);
  }
  reportStop(id, error, faults.stop, isDraft, report);
}

/// The same where those are all.
std::vector<Finding> refusal(const LoadError& error, const StrictText* text, Report& report)
{
  reportRefusal(error, text, false, report);
  return report.take(text != nullptr ? text->document.text() : std::string_view());
}

/// Checks a manifest; when there is none, returns one finding made from \p error. \p strictText gives
/// the text, or nothing, where the toolkit has parsed it.
template <typename TextOf>
std::vector<Finding> checkParsed(const std::optional<ManifestTree>& manifest,
                                 const LoadError& error, const Options& options, Report& report,
                                 const TextOf& strictText)
{
  if (manifest && manifest->inSource() != nullptr)
  {
    return checkTree(*manifest->inSource(), options, report);
  }
  const std::optional<StrictText> text = strictText();
  if (!manifest)
  {
    return refusal(error, text ? &*text : nullptr, report);
  }
  if (text)
  {
    return checkTree(*manifest->inToolkit(), *text, options, report);
  }
  checkTree(*manifest->inToolkit(), nullptr, nullptr, options, report);
  return report.take({});
}

Checked checkParsed(const std::optional<ManifestTree>& manifest, const LoadError& error,
                    const Options& options, Report& report, const std::optional<std::string>& left)
{
  const auto strictText = [&left]
  { return left ? std::optional(strictTextOfBytes(*left)) : std::nullopt; };
  return {checkParsed(manifest, error, options, report, strictText),
          manifest ? manifest->root().attribute(manifestNames().uuid) : std::string()};
}

Checked check(QIODevice& device, const Options& options, Report& report)
{
  LoadError error;
  std::optional<std::string> left;
  const std::optional<ManifestTree> manifest = parseDevice(device, error, Parsers::Both, &left);
  return checkParsed(manifest, error, options, report, left);
}

Checked check(const std::string& bytes, const Options& options, Report& report)
{
  QBuffer device;
  device.setData(QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())));
  device.open(QIODevice::ReadOnly);
  return check(device, options, report);
}
} // namespace

std::vector<Finding> checkFile(const std::string& path, const Options& options)
{
  Report report(options);
  LoadError error;
  std::optional<std::string> left;
  const std::optional<ManifestTree> manifest = parseFile(path, error, Parsers::Both, &left);
  return checkParsed(manifest, error, options, report, left).findings;
}

std::vector<Finding> checkDevice(QIODevice& device, const Options& options)
{
  Report report(options);
  return check(device, options, report).findings;
}

Checked checkBytes(const std::string& bytes, const Options& options)
{
  Report report(options);
  return check(bytes, options, report);
}

std::vector<Finding> checkText(const std::string& text, const Options& options)
{
  Report report(options);
  LoadError error;
  const std::optional<ManifestTree> manifest = parseManifest(text, error);
  return checkParsed(manifest, error, options, report,
                     [&text] { return std::optional(strictTextOfText(text)); });
}

std::vector<Finding> checkDraft(const std::string& text, const Options& options)
{
  Report report(options);
  LoadError error;
  const std::optional<ManifestTree> manifest = parseManifest(text, error);
  if (manifest)
  {
    return checkParsed(manifest, error, options, report,
                       [&text] { return std::optional(strictTextOfText(text)); });
  }
  const StrictText strict = strictTextOfText(text);
  reportRefusal(error, &strict, true, report);
  if (strict.document.root() != nullptr)
  {
    Checker(Node(&*strict.document.nodes().begin()), nullptr, options, report, &strict.document)
        .check(Node(nullptr));
  }
  return report.take(strict.document.text());
}

std::vector<Finding> checkDocument(const QDomDocument& document, const Options& options)
{
  Report report(options);
  checkTree(document, nullptr, nullptr, options, report);
  return report.take({});
}

} // namespace vesk::check
