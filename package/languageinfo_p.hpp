// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_LANGUAGEINFO_P_HPP
#define PACKAGE_LANGUAGEINFO_P_HPP

#include <package/recordmember.hpp>

#include <map>
#include <string>
#include <tuple>

class QDomDocument;
class QDomNode;

namespace vesk
{

class LanguageInfo;
class XmlNode;

/// What a LanguageInfo holds.
struct LanguageInfoPrivate
{
  std::string path; ///< relative to the package
  std::string engineName;
  std::string engineVersion;
  std::string locale; ///< an ISO 639 code
  std::map<std::string, std::string> langToName;

  /// The handle that owns this record. Copying a record copies it, so the new handle must reset it.
  LanguageInfo* owner = nullptr;

  /// Adds what a "languageContent" element holds to the record of the owner. Always true.
  bool loadFromManifest(QDomNode& node);
  bool loadFromManifest(const XmlNode& node);
  /// Appends a "languageContent" element to \p parent.
  void saveToManifest(QDomDocument& doc, QDomNode& parent) const;
};

template <>
struct StructDescription<LanguageInfoPrivate>
{
  using Record = LanguageInfoPrivate;
  static constexpr auto name = "vesk::LanguageInfoPrivate"; // without "::": peers know it by that
  static constexpr auto publicName = "::vesk::LanguageInfo";
  static constexpr auto members =
      std::make_tuple(recordMember("path", "path", &Record::path),
                      recordMember("engineName", "engineName", &Record::engineName),
                      recordMember("engineVersion", "engineVersion", &Record::engineVersion),
                      recordMember("locale", "locale", &Record::locale),
                      recordMember("langToName", "names", &Record::langToName, Keeps::All));
};

inline auto allMembers(const LanguageInfoPrivate& record)
{
  const auto& [path, engineName, engineVersion, locale, names, owner] = record;
  static_cast<void>(owner); // no field
  return std::tie(path, engineName, engineVersion, locale, names);
}

static_assert(describesAllMembers<LanguageInfoPrivate>);

} // namespace vesk

#endif
