// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"
#include "output/complaint.hpp"
#include "verbs/verbs.hpp"

#include <check/manifestcheck.hpp>
#include <package/behaviorinfo.hpp>

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <iostream>
#include <sstream>

namespace tool
{
namespace
{
/// What stands in front of the sections, for the author. In a section, a comment could count as an
/// entry.
const std::vector<std::pair<std::string, std::string>> hints{
    {"  <names>", "What people see. Descriptions, in <descriptions>, are made as the names are."},
    {"  <supportedLanguages>", "The languages that the package speaks and understands."},
    {"  <descriptionLanguages>", "The languages of the names and descriptions."},
    {"  <contents", R"(Behaviors by their folders, as in <behaviorContent path="greeting"/>.)"}};

/// The folder in which the manifest will be: the package's own.
std::string folderOf(const std::string& output)
{
  const QDir folder =
      output == "-" ? QDir::current() : QFileInfo(QString::fromStdString(output)).absoluteDir();
  const std::string name = folder.dirName().toStdString();
  return faultInText(name).empty() ? name : "New package";
}

vesk::PackageInfo packageFor(const NewOptions& options)
{
  vesk::PackageInfo package;
  package.setUuid(options.uuid.empty()
                      ? QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString()
                      : options.uuid);
  package.setVersion("0.1");
  for (const std::string& language : options.languages)
  {
    package.setName(options.name.empty() ? folderOf(options.output) : options.name, language);
    package.addSupportedLanguage(language);
    package.addDescriptionLanguage(language);
  }
  for (const std::string& path : options.behaviors)
  {
    vesk::BehaviorInfo behavior;
    behavior.setPath(path);
    behavior.setNature(vesk::BehaviorInfo::natureInteractive());
    package.addBehavior(behavior);
  }
  return package;
}

std::string withHints(const std::string& manifest)
{
  std::istringstream lines(manifest);
  std::string text;
  for (std::string line; std::getline(lines, line);)
  {
    for (const auto& [section, hint] : hints)
    {
      if (line.compare(0, section.size(), section) == 0)
      {
        text.append("  <!-- ").append(hint).append(" -->\n");
      }
    }
    text.append(line).append("\n");
  }
  return text;
}

/// Complains of what the checker finds; false when that is nothing.
bool complainOfFaults(const std::string& manifest)
{
  QBuffer bytes;
  bytes.setData(QByteArray::fromStdString(manifest));
  bytes.open(QIODevice::ReadOnly);
  const auto findings = vesk::check::checkDevice(bytes, {});
  const auto isFault = [](const vesk::check::Finding& finding)
  { return finding.severity >= vesk::check::Severity::Warning; };
  for (const vesk::check::Finding& finding : findings)
  {
    if (isFault(finding))
    {
      complain(std::cerr, "veskpackage", finding.message);
    }
  }
  return std::any_of(findings.begin(), findings.end(), isFault);
}
} // namespace

std::string faultInText(const std::string& text)
{
  const QString characters = QString::fromStdString(text);
  const auto isRefused = [](QChar character)
  {
    return character.category() == QChar::Other_Control || character == QChar(0x2028) ||
           character == QChar(0x2029) || character.unicode() >= 0xFFFD;
  };
  if (characters.trimmed().isEmpty())
  {
    return "there is nothing in it";
  }
  return std::any_of(characters.begin(), characters.end(), isRefused)
             ? "it has control characters, or what is no UTF-8"
             : "";
}

ExitCode newManifest(const NewOptions& options)
{
  const std::string manifest = withHints(vesk::edit::writeManifest(packageFor(options)));
  if (complainOfFaults(manifest))
  {
    return WrongUsage;
  }
  if (options.output != "-" && !options.isForced &&
      QFileInfo(QString::fromStdString(options.output)).isFile())
  {
    complain(std::cerr, options.output, "not written: the file exists; --force replaces it");
    return NegativeResult;
  }
  return writeFile(manifest, options.output, std::cout, std::cerr) ? Done : FileTrouble;
}

} // namespace tool
