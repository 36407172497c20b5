// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_OUTPUT_CHECKEDFILE_HPP
#define TOOLS_VESKPACKAGE_OUTPUT_CHECKEDFILE_HPP

#include "exitcode.hpp"

#include <check/manifestcheck.hpp>
#include <source/document.hpp>
#include <source/lines.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool
{

/// What was found in a file.
class CheckedFile
{
public:
  CheckedFile() = default;
  CheckedFile(const CheckedFile&) = delete;
  CheckedFile& operator=(const CheckedFile&) = delete;
  ~CheckedFile() = default;

  std::string name;
  std::string bytes; ///< empty where it could not be read
  std::string uuid;  ///< of the package; empty where it has none
  std::vector<vesk::check::Finding> findings;
  std::size_t mended = 0; ///< how many faults were mended before
  ExitCode code = Done;

  /// The file in UTF-8, in which the findings have their places: as source::Document::text().
  std::string_view text() const;
  /// From the beginning of a finding to its end; empty where that is not known.
  std::string_view text(const vesk::check::Finding& finding) const;
  /// The text of an edit, with the line ends of the file.
  std::string inFile(const std::string& edited) const;
  /// Where a byte of the text stands.
  vesk::check::Position positionOf(std::size_t offset) const;

private:
  // Made when they are first asked for, since most files have no findings.
  mutable std::optional<vesk::source::Document> decoded; // where the file is not in UTF-8
  mutable std::optional<vesk::source::Lines> lines;
};

/// Whether a finding has a line and a column.
bool hasPlace(const vesk::check::Finding& finding);
/// Whether it is also known which bytes of the text it is about: not behind what is no strict XML.
bool hasExactPlace(const vesk::check::Finding& finding);

/// The place of a finding without the numbers of elements, which change when others are put in before:
/// "/a/b[2]/@c" as "/a/b/@c".
std::string withoutNumbers(const std::string& place);

} // namespace tool

#endif
