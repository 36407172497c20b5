// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_POLICY_BASELINE_HPP
#define TOOLS_VESKPACKAGE_POLICY_BASELINE_HPP

#include <check/manifestcheck.hpp>

#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace tool
{

/// Findings that are known, and kept in a file so that only others count. One is told by its
/// manifest, rule, place without numbers and message: lines and entries that are inserted before it
/// change nothing. Of equal ones, as many are known as there were.
class Baseline
{
public:
  /// What is known is read from \p file, unless that is empty. When \p fileToWrite is not empty, all
  /// that is found becomes known, for that file. Manifests are named by their paths from the folder
  /// of either. Throws FileFault when what is read is no baseline.
  Baseline(const std::string& file, const std::string& fileToWrite);

  /// Takes from the findings in a manifest those that are known, but none of one that cannot be read.
  void take(const std::string& manifest, std::vector<vesk::check::Finding>& findings);

  /// Writes the file. When that fails, says why and gives false.
  bool save(std::ostream& complaints);

  /// How many findings were taken, and how many of those known are gone, to come behind the other
  /// counts; empty without a baseline. Nothing is gone of manifests that were not checked, unless
  /// they do not exist any more.
  std::string summary() const;

private:
  /// Tag, place without numbers, message.
  using Known = std::tuple<std::string, std::string, std::string>;
  using Counts = std::map<Known, std::size_t>;

  void read();
  /// The same for the same findings, in whichever order they came.
  std::string text() const;
  std::string nameOf(const std::string& manifest);
  std::size_t countGone() const;

  const std::string file; ///< empty without a baseline
  const bool isWritten;
  bool isSaved = false;
  std::filesystem::path folder;       ///< absolute, without links
  bool isFirst = true;                ///< manifest that is named
  std::filesystem::path lastFolder;   ///< of the one that was named before, as it was given
  std::filesystem::path lastResolved; ///< the same as `folder` is
  std::map<std::string, Counts> all;  ///< by the name of the manifest
  std::map<std::string, Counts> left; ///< of what was read, in the manifests that were checked
  std::size_t countTaken = 0;
};

} // namespace tool

#endif
