// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_LANGUAGEINFO_HPP
#define PACKAGE_LANGUAGEINFO_HPP

#include <package/export.hpp>

#include <iosfwd>
#include <map>
#include <memory>
#include <string>

namespace XO
{
class XOValue;
}

namespace vesk
{

struct LanguageInfoPrivate;
struct RecordAccess;

/// Describes one language pack of a package: where it lies, the language it is for, the engine it
/// is made for, and what it is called in which language.
///
/// In a manifest it is one element:
/// \code{.xml}
/// <languageContent path="voices/italian">
///   <engine name="speaker" version="2.1"/>
///   <locale>it</locale>
///   <names><name lang="en_US">Italian</name></names>
/// </languageContent>
/// \endcode
///
/// To the type system a language pack is the struct "::vesk::LanguageInfo".
///
/// All text is UTF-8. Nothing is checked (a locale is any text) and nothing reports an error. A
/// copy shares nothing with its source. A moved-from object may only be destroyed or assigned to.
/// An object must not be changed while another thread uses it.
class VESKPACKAGE_EXPORT LanguageInfo
{
public:
  /// A language pack with all texts empty.
  LanguageInfo();
  LanguageInfo(const LanguageInfo& other);
  LanguageInfo(LanguageInfo&& other) noexcept;
  /// Copies all of \p other. Returns another copy, not a reference to this object.
  LanguageInfo operator=(const LanguageInfo& other);
  /// A language pack from its variant form: an array of 5 pairs [name, value], identified by
  /// position. What is missing or of the wrong kind is read as an empty value.
  LanguageInfo(const XO::XOValue& value);
  ~LanguageInfo();

  /// Where the pack lies, relative to the package.
  std::string path() const;
  void setPath(const std::string& path);

  /// The language of the pack, as an ISO 639 code.
  std::string locale() const;
  void setLocale(const std::string& locale);

  std::string engineName() const;
  void setEngineName(const std::string& name);

  std::string engineVersion() const;
  void setEngineVersion(const std::string& version);

  /// The pack's name in exactly this language; empty when there is none.
  std::string name(const std::string& lang) const;
  /// Language to name; valid until this object is changed or destroyed.
  const std::map<std::string, std::string>& names() const;
  /// No operation takes out again what is set. An empty text is not written to manifests.
  void setName(const std::string& name, const std::string& lang);

  /// Makes \p out the pack's variant form: an array of the 5 pairs [name, value] "path",
  /// "engineName", "engineVersion", "locale" and "names".
  void toXOValue(XO::XOValue& out) const;

private:
  friend struct RecordAccess;
  std::unique_ptr<LanguageInfoPrivate> record;
};

/// Prints the language pack as a block of labelled lines, each flushed as it is written. It is
/// meant for people and cannot be read back.
VESKPACKAGE_EXPORT std::ostream& operator<<(std::ostream& out, const LanguageInfo& language);

} // namespace vesk

#endif
