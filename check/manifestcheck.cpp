// SPDX-License-Identifier: Apache-2.0
#include <check/checker.hpp>
#include <package/xml/manifesttree.hpp>
#include <package/xml/text.hpp>

#include <QBuffer>

namespace vesk::check
{
namespace
{
std::vector<Finding> checkTree(const source::Document& document, const Options& options)
{
  Places places(document);
  const auto node = [&places](const source::Node* of) { return Node(XmlNode(of), &places); };
  Report report(options);
  Checker(node(&*document.nodes().begin()), node(document.root()), options, report)
      .check(node(nullptr));
  return report.take();
}

/// Checks a manifest; when there is none, returns one finding made from \p error.
std::vector<Finding> checkParsed(const std::optional<ManifestTree>& manifest,
                                 const LoadError& error, const Options& options)
{
  if (manifest)
  {
    return manifest->inToolkit() != nullptr ? checkDocument(*manifest->inToolkit(), options)
                                            : checkTree(*manifest->inSource(), options);
  }
  const RuleId id = error.line == 0        ? RuleId::Unreadable
                    : error.isBeyondLimits ? RuleId::BeyondLimits
                                           : RuleId::NotWellFormed;
  Report report(options);
  if (report.count(id))
  {
    report.add(id, toQString(error.message), error.line, error.column);
  }
  return report.take();
}
} // namespace

std::vector<Finding> checkFile(const std::string& path, const Options& options)
{
  LoadError error;
  return checkParsed(parseFile(path, error), error, options);
}

std::vector<Finding> checkDevice(QIODevice& device, const Options& options)
{
  LoadError error;
  return checkParsed(parseDevice(device, error), error, options);
}

Checked checkBytes(const std::string& bytes, const Options& options)
{
  QBuffer device;
  device.setData(bytes.data(), static_cast<int>(bytes.size()));
  device.open(QIODevice::ReadOnly);
  LoadError error;
  const std::optional<ManifestTree> manifest = parseDevice(device, error);
  return {checkParsed(manifest, error, options),
          manifest ? manifest->root().attribute(manifestNames().uuid) : std::string()};
}

std::vector<Finding> checkText(const std::string& text, const Options& options)
{
  LoadError error;
  return checkParsed(parseManifest(text, error), error, options);
}

std::vector<Finding> checkDocument(const QDomDocument& document, const Options& options)
{
  Report report(options);
  const auto node = [](const QDomNode& of) { return Node(of, nullptr); };
  const QDomDocumentType type = document.doctype();
  Checker(node(document.firstChild()), node(document.documentElement()), options, report)
      .check(node(type.name().isEmpty() ? QDomNode() : QDomNode(type)));
  return report.take();
}

} // namespace vesk::check
