// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_FINDINGS_HPP
#define TESTS_FINDINGS_HPP

#include "support.hpp"

#include <check/manifestcheck.hpp>

#include <algorithm>
#include <string>
#include <vector>

inline const std::string byteOrderMark = "\xEF\xBB\xBF";

inline std::vector<std::string> tagsOf(const std::vector<vesk::check::Finding>& findings)
{
  std::vector<std::string> tags(findings.size());
  std::transform(findings.begin(), findings.end(), tags.begin(),
                 [](const vesk::check::Finding& finding) { return finding.rule->tag; });
  return tags;
}

/// Also what is reported on request only.
inline vesk::check::Options everything()
{
  vesk::check::Options options;
  for (const vesk::check::Rule& rule : vesk::check::rules())
  {
    options.severities[rule.tag] = std::max(rule.severity, vesk::check::Severity::Hint);
  }
  return options;
}

/// The manifests in a folder, without ".xml".
inline std::vector<std::string> manifestsIn(const char* folder)
{
  std::vector<std::string> paths;
  for (const QFileInfo& file : QDir(folder).entryInfoList({"*.xml"}))
  {
    paths.push_back(file.path().toStdString() + '/' + file.completeBaseName().toStdString());
  }
  return paths;
}

/// The faulty manifests, each with what is wrong with it beside in a .txt file.
inline std::vector<std::string> faultyManifests() { return manifestsIn(GOLDEN_FILES "/check"); }

/// These, and those that are laid out in every way.
inline std::vector<std::string> goldenManifests()
{
  std::vector<std::string> paths = manifestsIn(GOLDEN_FILES "/messy");
  const std::vector<std::string> faulty = faultyManifests();
  paths.insert(paths.end(), faulty.begin(), faulty.end());
  return paths;
}

#endif
