// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_LANGUAGEINFO_P_HPP
#define PACKAGE_LANGUAGEINFO_P_HPP

#include <map>
#include <string>

class QDomDocument;
class QDomNode;

namespace vesk
{

class LanguageInfo;

/// What a LanguageInfo holds.
struct LanguageInfoPrivate
{
  std::string path; ///< relative to the package
  std::string engineName;
  std::string engineVersion;
  std::string locale; ///< an ISO 639 code
  std::map<std::string, std::string> langToName;

  /// The handle that owns this record. Copied with the record, so a handle sets it again.
  LanguageInfo* owner = nullptr;

  /// Adds what a "languageContent" element holds to the record of the owner. Always true.
  bool loadFromManifest(QDomNode& node);
  /// Appends a "languageContent" element to \p parent.
  void saveToManifest(QDomDocument& doc, QDomNode& parent) const;
};

} // namespace vesk

#endif
