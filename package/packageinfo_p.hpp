// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_PACKAGEINFO_P_HPP
#define PACKAGE_PACKAGEINFO_P_HPP

#include <package/packageinfo.hpp>

#include <list>
#include <map>
#include <string>

class QDomDocument;

namespace vesk
{

/// What a PackageInfo holds. Maps are keyed by language code.
struct PackageInfoPrivate
{
  std::string installer; ///< free text; not part of the manifest
  std::string uuid;
  std::string path; ///< where the package lies on disk; not part of the manifest
  std::string version;
  std::string channel;
  std::string author;
  std::string organization;
  std::string date;
  std::string typeVersion; ///< version of the manifest's format
  std::map<std::string, std::string> langToName;
  std::map<std::string, std::string> langToDesc;
  std::list<std::string> supportedLanguages;   ///< without duplicates
  std::list<std::string> descriptionLanguages; ///< without duplicates
  std::list<BehaviorInfo> behaviors;
  std::list<DialogInfo> dialogs;
  std::list<LanguageInfo> languages;
  std::list<RobotRequirement> robotRequirements;
  std::list<MirelRequirement> mirelRequirements;
  std::list<PackageService> services;
  std::list<std::string> executableFiles; ///< paths relative to the package

  /// Number of the members above.
  static constexpr int fieldsCount = 20;

  void trimExtraInfo();

  /// Adds what a manifest holds to \p info.
  void loadFromXmlDocument(const QDomDocument& document, PackageInfo* info);
  /// Writes \p package, which owns this record, into an empty document.
  void saveToXmlDocument(QDomDocument& doc, const PackageInfo* package) const;
};

} // namespace vesk

#endif
