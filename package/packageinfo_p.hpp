// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_PACKAGEINFO_P_HPP
#define PACKAGE_PACKAGEINFO_P_HPP

#include <package/packageinfo.hpp>
#include <package/recordmember.hpp>

#include <list>
#include <map>
#include <string>
#include <tuple>

class QDomDocument;

namespace vesk
{

class XmlNode;

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
  void loadFromManifest(const XmlNode& root, PackageInfo* info);
  /// Writes \p package, which owns this record, into an empty document.
  void saveToXmlDocument(QDomDocument& doc, const PackageInfo* package) const;
};

template <>
struct StructDescription<PackageInfoPrivate>
{
  using Record = PackageInfoPrivate;
  static constexpr auto name = "::vesk::PackageInfoPrivate";
  static constexpr auto publicName = "::vesk::PackageInfo";
  static constexpr auto members = std::make_tuple(
      recordMember("uuid", "uuid", &Record::uuid), recordMember("path", "path", &Record::path),
      recordMember("version", "version", &Record::version),
      recordMember("channel", "channel", &Record::channel),
      recordMember("author", "author", &Record::author),
      recordMember("organization", "organization", &Record::organization),
      recordMember("date", "date", &Record::date),
      recordMember("typeVersion", "typeVersion", &Record::typeVersion),
      recordMember("langToName", "names", &Record::langToName, Keeps::DescriptionLanguages),
      recordMember("langToDesc", "descriptions", &Record::langToDesc, Keeps::DescriptionLanguages),
      recordMember("supportedLanguages", "supportedLanguages", &Record::supportedLanguages),
      recordMember("behaviors", "behaviors", &Record::behaviors),
      recordMember("languages", "languages", &Record::languages),
      recordMember("installer", "installer", &Record::installer),
      recordMember("robotRequirements", "robotRequirements", &Record::robotRequirements),
      recordMember("mirelRequirements", "mirelRequirements", &Record::mirelRequirements),
      recordMember("services", "services", &Record::services),
      recordMember("executableFiles", "executableFiles", &Record::executableFiles),
      recordMember("dialogs", "dialogs", &Record::dialogs),
      recordMember("descriptionLanguages", "descriptionLanguages", &Record::descriptionLanguages));
};

inline auto allMembers(const PackageInfoPrivate& record)
{
  const auto& [installer, uuid, path, version, channel, author, organization, date, typeVersion,
               names, descriptions, supportedLanguages, descriptionLanguages, behaviors, dialogs,
               languages, robotRequirements, mirelRequirements, services, executableFiles] = record;
  return std::tie(installer, uuid, path, version, channel, author, organization, date, typeVersion,
                  names, descriptions, supportedLanguages, descriptionLanguages, behaviors, dialogs,
                  languages, robotRequirements, mirelRequirements, services, executableFiles);
}

static_assert(describesAllMembers<PackageInfoPrivate>);
static_assert(describedMembers<PackageInfoPrivate> == PackageInfoPrivate::fieldsCount);

inline auto allMembers(const RobotRequirement& record)
{
  const auto& [model, minHead, maxHead, minBody, maxBody] = record;
  return std::tie(model, minHead, maxHead, minBody, maxBody);
}

inline auto allMembers(const MirelRequirement& record)
{
  const auto& [minVersion, maxVersion] = record;
  return std::tie(minVersion, maxVersion);
}

inline auto allMembers(const PackageService& record)
{
  const auto& [execStart, name, autoRun] = record;
  return std::tie(execStart, name, autoRun);
}

static_assert(describesAllMembers<RobotRequirement> && describesAllMembers<MirelRequirement> &&
              describesAllMembers<PackageService>);

} // namespace vesk

#endif
