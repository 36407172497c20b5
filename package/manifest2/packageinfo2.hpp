// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_MANIFEST2_PACKAGEINFO2_HPP
#define PACKAGE_MANIFEST2_PACKAGEINFO2_HPP

#include <package/behaviorinfo.hpp>
#include <package/dialoginfo.hpp>
#include <package/export.hpp>
#include <package/languageinfo.hpp>
#include <package/manifest2/webinfo.hpp>
#include <vesk/anyvalue.hpp>

#include <map>
#include <string>
#include <vector>

namespace vesk
{

/// A manifest as loadManifest() reads it: the root's attributes as texts, and each section as a
/// generic value under the name of its element.
///
/// | Key in sections                | Value                                                      |
/// |--------------------------------|------------------------------------------------------------|
/// | "names", "descriptions"        | std::map<std::string, std::string>: language to text       |
/// | "services"                     | std::vector<PackageService>                                |
/// | "executableFiles"              | std::vector<std::string>: paths relative to the package    |
/// | "requirements"                 | std::pair<std::vector<RobotRequirement>,                   |
/// |                                | std::vector<MirelRequirement>>                             |
/// | "supportedLanguages"           | std::vector<std::string>: language codes, also repeated    |
/// | "contents"                     | std::map<std::string, AnyValue>, see below                 |
///
/// | Key in contents()              | Value                                                      |
/// |--------------------------------|------------------------------------------------------------|
/// | "behaviors"                    | std::vector<BehaviorInfo>                                  |
/// | "dialogs"                      | std::vector<DialogInfo>                                    |
/// | "languages"                    | std::vector<LanguageInfo>                                  |
/// | "web"                          | WebInfo                                                    |
///
/// There is no key for a section that the manifest lacks, nor for an empty list in the contents. A
/// caller may store further keys and other types; PackageInfo(const PackageInfo2&) ignores the keys
/// and converts the types.
///
/// \code
/// vesk::PackageInfo2 info = vesk::loadManifest("manifest.xml"); // throws std::runtime_error
/// for (const auto& [name, section] : info.sections) { … }
/// for (vesk::BehaviorInfo& behavior : info.behaviors()) { behavior.addTag("museum", "en_US"); }
/// std::string root = std::as_const(info).web().path; // empty without web content
/// vesk::PackageInfo package(info);
/// \endcode
///
/// All text is UTF-8. A copy shares nothing with its source; a moved-from object is valid, with
/// unspecified content. An object must not be used by two threads at once, not even for reading, since
/// some reads change a BehaviorInfo; distinct objects may. The records of the tables are declared in
/// <package/packageinfo.hpp>.
struct VESKPACKAGE_EXPORT PackageInfo2
{
  std::string uuid;
  std::string version;
  std::string author;
  std::string channel;
  std::string organization;
  std::string date;
  std::string typeVersion; ///< the version of the manifest's format
  std::string installer;   ///< not part of the manifest: empty unless a caller sets it
  std::string path;        ///< where the package lies on disk; set by callers, like installer
  std::map<std::string, AnyValue> sections;

  /// Return copies; empty ones of what is absent. A value of another type is converted; throws
  /// ConversionError when it does not convert, as with an empty AnyValue. To call these on an
  /// object that is not const, use std::as_const().
  /// \{
  std::map<std::string, AnyValue> contents() const;
  std::vector<BehaviorInfo> behaviors() const;
  std::vector<DialogInfo> dialogs() const;
  std::vector<LanguageInfo> languages() const;
  WebInfo web() const;
  /// \}

  /// Return references to the stored values; an absent one is first stored as an empty value.
  /// References stay valid until the value is removed, replaced by another AnyValue or destroyed.
  /// Throw std::runtime_error "Type mismatch" when the stored value is of another type; contents
  /// that the call has stored are kept.
  /// \{
  std::map<std::string, AnyValue>& contents();
  std::vector<BehaviorInfo>& behaviors();
  std::vector<DialogInfo>& dialogs();
  std::vector<LanguageInfo>& languages();
  /// \}

  /// A reference to the stored web content. Unlike the lists, absent web content is not created:
  /// the call stores an empty AnyValue as "web" and throws std::runtime_error "Type mismatch", as
  /// it does for a value of another type. To add web content, store it:
  /// contents()["web"] = WebInfo{…}.
  WebInfo& web();
};

} // namespace vesk

#endif
