// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_MANIFESTCHECK_HPP
#define CHECK_MANIFESTCHECK_HPP

#include <check/export.hpp>
#include <source/edits.hpp>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

class QDomDocument;
class QIODevice;

/// Tells the people who write manifests what the readers pass over in silence.
namespace vesk::check
{

enum class Severity
{
  Off,     ///< not reported: no fault
  Hint,    ///< read as it is meant, surely, but better mended
  Warning, ///< surely not meant so
  Error    ///< no reader gets anything of the manifest
};

/// One thing that a manifest is checked for.
struct Rule
{
  const char* tag;   ///< its name in kebab-case; does not change between versions
  Severity severity; ///< unless the options say otherwise
  /// Whether what it finds is lost when the manifest is read and written.
  bool isLost;
  /// What is wrong, what the readers do with it, and how to mend it: a few sentences.
  const char* explanation;
};

/// All rules, in the order in which they are documented. They live to the end of the program.
VESKPACKAGE_CHECK_EXPORT const std::vector<Rule>& rules();

/// The rule with this tag; null when there is none.
VESKPACKAGE_CHECK_EXPORT const Rule* findRule(const std::string& tag);

/// A place in the text of a manifest. All are 0 where something is nowhere in the text.
struct Position
{
  int line = 0;        ///< from 1; lines end with "\n", "\r\n" or "\r"
  int column = 0;      ///< from 1, in characters
  int utf16Column = 0; ///< from 1, in UTF-16 code units
  /// In bytes of the text in UTF-8, from 0: as source::Document::text() has it, byte order mark
  /// included.
  std::size_t offset = 0;
};

/// How a fault can surely be mended.
struct Mend
{
  std::string title;               ///< what it does, such as `write "lang"`
  std::vector<source::Edit> edits; ///< of the manifest, as source::apply() makes them
};

/// One fault of one manifest. All text is UTF-8.
struct Finding
{
  const Rule* rule;    ///< never null
  Severity severity;   ///< never Severity::Off
  std::string message; ///< one line, without the place
  /// What it is about: an attribute or its value, the name of an element, a text. The end is where
  /// that has ended; the same as the beginning where no more than that is known.
  Position begin;
  Position end;
  /// The path of the element, attribute (`/package/@uuid`), text or comment, as XPath has it;
  /// numbered from 1 where there are several of a name. Empty when the manifest could not be
  /// parsed. Names longer than 80 characters are cut.
  std::string place;
  /// None where it is for people to judge what was meant, or the text is no strict XML.
  std::optional<Mend> mend = std::nullopt;
};

/// What checking a file gives.
struct Checked
{
  std::vector<Finding> findings; ///< in document order
  std::string uuid;              ///< of the package; empty where it has none
};

/// What is checked, and how grave it is.
struct Options
{
  /// By the tag of a rule; unknown tags are ignored.
  std::map<std::string, Severity> severities;
  /// The folder of the package (UTF-8): paths in the manifest are looked up there, and the programs
  /// of command lines that are such paths. Symbolic links are followed. Empty: nothing is looked up.
  std::string packageFolder;
  /// At most the first so many findings of a rule are returned; a finding takes about a hundred times
  /// the memory of the text that causes it.
  std::size_t mostOfARule = 1000;
};

/// Returns what is wrong with a manifest, in document order. One pass finds everything; but when
/// the manifest is not well-formed, or beyond the limits that PackageInfo::loadFromManifestFile()
/// names, that is the only finding beside what is no strict XML in front of that. Nothing is printed
/// or logged, and nothing is thrown for a bad manifest. Takes time in proportion to the manifest.
/// Where there are more findings of a rule than Options::mostOfARule, the message of the last one
/// says how many are left out. May be called from any
/// thread at any time.
/// \{

/// Checks the file at \p path (UTF-8).
VESKPACKAGE_CHECK_EXPORT std::vector<Finding> checkFile(const std::string& path,
                                                        const Options& options = {});
/// Checks an open device from its current position to its end, in any encoding. If a file cannot be
/// read to its end, that is the only finding.
VESKPACKAGE_CHECK_EXPORT std::vector<Finding> checkDevice(QIODevice& device,
                                                          const Options& options = {});
/// Checks the bytes of a file.
VESKPACKAGE_CHECK_EXPORT Checked checkBytes(const std::string& bytes, const Options& options = {});
/// Checks a manifest's text, up to the first NUL byte.
VESKPACKAGE_CHECK_EXPORT std::vector<Finding> checkText(const std::string& text,
                                                        const Options& options = {});
/// Checks a text that somebody is writing: as checkText(), but where no reader takes the manifest, what
/// is wrong before the place at which it stops to be XML is found as well, without a mend. What may be
/// missing in elements that are open there is no finding, since it may come yet.
VESKPACKAGE_CHECK_EXPORT std::vector<Finding> checkDraft(const std::string& text,
                                                         const Options& options = {});
/// Checks a parsed document. It must not be nested deeper than the stack allows, some ten thousand
/// levels within a text; the functions above refuse documents that are.
VESKPACKAGE_CHECK_EXPORT std::vector<Finding> checkDocument(const QDomDocument& document,
                                                            const Options& options = {});
/// \}

/// What is wrong with a manifest whose package has the uuid of another one, that in the file
/// \p other: which manifests are compared is up to the caller. None where the options say that this
/// is no fault.
VESKPACKAGE_CHECK_EXPORT std::optional<Finding>
repeatedUuid(const std::string& bytes, const std::string& other, const Options& options = {});

/// "error", "warning", "hint" or "off".
VESKPACKAGE_CHECK_EXPORT const char* nameOf(Severity severity);

} // namespace vesk::check

#endif
