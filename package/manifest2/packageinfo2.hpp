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
/// What the manifest lacks has no key, and neither have empty lists in the contents. A caller may
/// store further keys and other types; PackageInfo(const PackageInfo2&) takes what converts.
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
  std::string path;        ///< where the package lies on disk; as installer
  std::map<std::string, AnyValue> sections;

  /// Copies, empty ones of what is absent. A value of another type is converted; ConversionError is
  /// thrown when it does not convert, as an empty AnyValue does not. On an object that is not const
  /// std::as_const() chooses these.
  /// \{
  std::map<std::string, AnyValue> contents() const;
  std::vector<BehaviorInfo> behaviors() const;
  std::vector<DialogInfo> dialogs() const;
  std::vector<LanguageInfo> languages() const;
  WebInfo web() const;
  /// \}

  /// The stored values themselves, made empty first where they are absent. References stay valid
  /// until the value is removed, replaced by another AnyValue or destroyed. Throws
  /// std::runtime_error "Type mismatch" when what is stored is of another type; contents made on the
  /// way stay.
  /// \{
  std::map<std::string, AnyValue>& contents();
  std::vector<BehaviorInfo>& behaviors();
  std::vector<DialogInfo>& dialogs();
  std::vector<LanguageInfo>& languages();
  /// \}

  /// The stored web content itself. Unlike the lists it is not made where it is absent: then an
  /// AnyValue without value stays behind as "web", and std::runtime_error "Type mismatch" is thrown,
  /// as for a value of another type. To add web content, store it: contents()["web"] = WebInfo{…}.
  WebInfo& web();
};

} // namespace vesk

#endif
