// SPDX-License-Identifier: Apache-2.0
// Manifests that are read without the toolkit's parser are read as with it.
#include "readalike.hpp"

#include "support.hpp"

#include <check/manifestcheck.hpp>
#include <package/manifest2/loadmanifest.hpp>
#include <package/xml/manifesttree.hpp>
#include <package/xml/parsing.hpp>
#include <package/xml/text.hpp>

#include <QBuffer>

#include <numeric>
#include <set>

using vesk::AnyConstReference;
using vesk::LoadError;

namespace
{
struct Buffer : QBuffer
{
  explicit Buffer(const std::string& bytes)
  {
    setData(bytes.data(), static_cast<int>(bytes.size()));
    open(QIODevice::ReadOnly);
  }
};

/// The two ways to give a manifest to the readers.
struct Text
{
  template <typename Record>
  static bool read(const std::string& text, Record& record, LoadError& error)
  {
    if constexpr (std::is_same_v<Record, vesk::PackageInfo>)
    {
      return record.readManifestText(text, error);
    }
    else
    {
      return readManifestText(text, record, error);
    }
  }
  static auto checked(const std::string& text, const vesk::check::Options& options)
  {
    return vesk::check::checkText(text, options);
  }
  static auto parsed(const std::string& text, LoadError& error)
  {
    return vesk::parseXml(vesk::toQString(text), error);
  }
  static auto parsedByEither(const std::string& text, LoadError& error)
  {
    return vesk::parseManifest(text, error);
  }
};

struct File
{
  template <typename Record>
  static bool read(const std::string& bytes, Record& record, LoadError& error)
  {
    Buffer device(bytes);
    if constexpr (std::is_same_v<Record, vesk::PackageInfo>)
    {
      return record.readManifestDevice(device, error);
    }
    else
    {
      return readManifestDevice(device, record, error);
    }
  }
  static auto checked(const std::string& bytes, const vesk::check::Options& options)
  {
    Buffer device(bytes);
    return vesk::check::checkDevice(device, options);
  }
  static auto parsed(const std::string& bytes, LoadError& error)
  {
    Buffer device(bytes);
    return vesk::parseXml(device, error);
  }
  static auto parsedByEither(const std::string& bytes, LoadError& error)
  {
    Buffer device(bytes);
    return vesk::parseManifest(device, error);
  }
};

void requireSame(const AnyConstReference& expected, const AnyConstReference& actual,
                 const std::string& bytes)
{
  if (!(expected == actual))
  {
    requireEqual(expected, actual, "without the toolkit, of\n" + bytes + "\n");
    require(false, "without the toolkit something else is read of\n" + bytes);
  }
}

using Findings = std::vector<vesk::check::Finding>;

std::string shown(const vesk::check::Finding& finding)
{
  return std::string(finding.rule->tag) + ' ' + finding.message + ' ' + finding.place + '\n';
}

std::string shown(const vesk::check::Position& position)
{
  return std::to_string(position.line) + ':' + std::to_string(position.column) + ':' +
         std::to_string(position.utf16Column) + '@' + std::to_string(position.offset) + ' ';
}

/// Without places in the text, of which the toolkit knows little.
std::string inAnyOrder(const Findings& findings)
{
  std::multiset<std::string> lines;
  for (const vesk::check::Finding& finding : findings)
  {
    lines.insert(shown(finding));
  }
  return std::accumulate(lines.begin(), lines.end(), std::string());
}

/// With places and mends, but for comments and the like.
std::string inOrder(const Findings& findings)
{
  std::string text;
  for (const vesk::check::Finding& finding : findings)
  {
    if (finding.rule->tag != std::string("not-kept"))
    {
      text += shown(finding.begin) + shown(finding.end) + shown(finding) +
              (finding.mend ? finding.mend->title + '\n' : "");
    }
  }
  return text;
}

/// Options by which all rules report.
vesk::check::Options allRules()
{
  vesk::check::Options options;
  for (const vesk::check::Rule& rule : vesk::check::rules())
  {
    options.severities[rule.tag] = vesk::check::Severity::Warning;
  }
  return options;
}

/// Gives whether it is read without the toolkit.
template <typename Given>
bool requireReadAlikeAs(const std::string& bytes)
{
  LoadError toolkitsError;
  const std::optional<QDomDocument> document = Given::parsed(bytes, toolkitsError);
  LoadError error;
  vesk::PackageInfo2 info;
  require(Given::read(bytes, info, error) == document.has_value(),
          toolkitsError.message + ": of two ways to read one refuses\n" + bytes);
  require(error.message == toolkitsError.message && error.line == toolkitsError.line &&
              error.column == toolkitsError.column &&
              error.isBeyondLimits == toolkitsError.isBeyondLimits,
          error.message + " is what one way says of\n" + bytes);
  if (!document)
  {
    return false;
  }
  const vesk::PackageInfo2 toolkits = vesk::loadXmlDocument(*document);
  requireSame(AnyConstReference(toolkits.sections), AnyConstReference(info.sections), bytes);
  const auto tree = Given::parsedByEither(bytes, error);
  if (tree->inToolkit() != nullptr)
  {
    return false;
  }
  // A carriage return is always left to the toolkit; behind the root it is nothing to the readers.
  vesk::PackageInfo package;
  vesk::PackageInfo byToolkit;
  require(Given::read(bytes, package, error) && Given::read(bytes + "<!--\r-->", byToolkit, error),
          "refused with a comment at the end\n" + bytes);
  requireSame(AnyConstReference(byToolkit), AnyConstReference(package), bytes);
  static const vesk::check::Options options = allRules();
  const auto requireSameText = [&bytes](const std::string& expected, const std::string& found)
  {
    require(found == expected,
            expected + "is found with the toolkit, and without it\n" + found + "in\n" + bytes);
  };
  const Findings found = Given::checked(bytes, options);
  requireSameText(inAnyOrder(vesk::check::checkDocument(*document, options)), inAnyOrder(found));
  requireSameText(inOrder(Given::checked(bytes + "<!--\r-->", options)), inOrder(found));
  return true;
}
} // namespace

bool requireReadAlike(const std::string& bytes)
{
  requireReadAlikeAs<Text>(bytes);
  return requireReadAlikeAs<File>(bytes);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  requireReadAlike(textOf(data, size));
  return 0;
}
