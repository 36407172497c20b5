// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_PACKAGEINFO_HPP
#define PACKAGE_PACKAGEINFO_HPP

#include <package/behaviorinfo.hpp>
#include <package/dialoginfo.hpp>
#include <package/export.hpp>
#include <package/languageinfo.hpp>
#include <package/loaderror.hpp>
#include <vesk/structdescription.hpp>

#include <iosfwd>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <tuple>

class QFile;
class QIODevice;

namespace XO
{
class XOValue;
}

namespace vesk
{

struct PackageInfo2;
struct PackageInfoPrivate;
struct RecordAccess;

/// A service that a package provides.
struct PackageService
{
  std::string execStart; ///< command line that starts it
  std::string name;
  bool autoRun = false; ///< whether it is started by itself; "autorun" in a manifest
};

/// How the type system publishes it; the order is also that of its variant form.
template <>
struct StructDescription<PackageService>
{
  static constexpr auto name = "::vesk::PackageService";
  static constexpr auto members = std::make_tuple(member("execStart", &PackageService::execStart),
                                                  member("name", &PackageService::name),
                                                  member("autoRun", &PackageService::autoRun));
};

/// The robot hardware that a package runs on. Versions are free texts; none is compared here.
struct RobotRequirement
{
  std::string model;
  std::string minHeadVersion;
  std::string maxHeadVersion;
  std::string minBodyVersion;
  std::string maxBodyVersion;
};

/// How the type system publishes it; the order is also that of its variant form.
template <>
struct StructDescription<RobotRequirement>
{
  static constexpr auto name = "::vesk::RobotRequirement";
  static constexpr auto members =
      std::make_tuple(member("model", &RobotRequirement::model),
                      member("minHeadVersion", &RobotRequirement::minHeadVersion),
                      member("maxHeadVersion", &RobotRequirement::maxHeadVersion),
                      member("minBodyVersion", &RobotRequirement::minBodyVersion),
                      member("maxBodyVersion", &RobotRequirement::maxBodyVersion));
};

/// The versions of the robot's system software, Mirel, that a package runs on, as free texts.
struct MirelRequirement
{
  std::string minVersion;
  std::string maxVersion;
};

/// How the type system publishes it; the order is also that of its variant form.
template <>
struct StructDescription<MirelRequirement>
{
  static constexpr auto name = "::vesk::MirelRequirement";
  static constexpr auto members =
      std::make_tuple(member("minVersion", &MirelRequirement::minVersion),
                      member("maxVersion", &MirelRequirement::maxVersion));
};

/// The manifest of one application package: its identity, its texts in several languages, what it
/// needs and provides, and descriptions of what it contains.
///
/// | What                        | Accessors                           | In the manifest          |
/// |-----------------------------|-------------------------------------|--------------------------|
/// | uuid, version, author, …    | uuid, setUuid, …                    | attributes of the root   |
/// | installer, path             | installer, path, …                  | neither read nor written |
/// | names, descriptions         | name, names, setName, …             | "names", "descriptions"  |
/// | languages of the content    | supportedLanguages, …               | "supportedLanguages"     |
/// | languages of the texts      | descriptionLanguages, …             | "descriptionLanguages"   |
/// | behaviors, dialogs, …       | behaviors, dialogs, languages, …    | "contents"               |
/// | requirements                | robotRequirements, …                | "requirements"           |
/// | services                    | services, addService, …             | "services"               |
/// | executable files            | executableFiles, addExecutableFile  | "executableFiles"        |
///
/// \code
/// vesk::PackageInfo package;
/// if (!package.loadFromManifestFile("manifest.xml")) { return 1; } // the log says why
/// package.setName("Museum guide", "en_US");
/// package.saveToManifestFile("manifest.xml");
/// \endcode
///
/// To the type system a package is the struct "::vesk::PackageInfo", so that an AnyValue can hold it
/// and reach its fields by name. An AnyReference to a package changes them, too, also where no
/// operation takes out again what was added.
///
/// All text is UTF-8; versions and dates are free texts. Texts come first in argument lists, the
/// language last. Nothing is checked and editing reports no error. A copy shares nothing with its
/// source. References that accessors give are valid until the package is changed, assigned to or
/// destroyed. A moved-from package may only be destroyed or assigned to. A package must not be used
/// by two threads at once; distinct packages may.
///
/// When memory runs out, std::bad_alloc is thrown. Loading and assigning then change nothing; other
/// operations may be half done. The XML toolkit, which loading and writing use, does not check each
/// of its own allocations: if one of those fails, memory may leak or the program may end.
class VESKPACKAGE_EXPORT PackageInfo
{
public:
  /// An empty package.
  PackageInfo();
  PackageInfo(const PackageInfo& other);
  PackageInfo(PackageInfo&& other) noexcept;
  /// Copies all of \p other. Returns another copy, not a reference to this object.
  PackageInfo operator=(const PackageInfo& other);
  /// A package from its variant form: an array of 20 pairs [name, value], in the order of
  /// toXOValue(). Arrays of 19 (without description languages) or 18 pairs (also without dialogs)
  /// are read as well. Pairs are identified by position; their names are ignored. Any other value
  /// gives an empty package; a part of the wrong kind is read as an empty value. Never throws for a
  /// bad value.
  PackageInfo(const XO::XOValue& value);
  /// Copies the texts, sections and contents that a package has, whether loadManifest() has read
  /// them or a caller has stored them. Web content is dropped, repeated supported languages are
  /// kept once, and there are no description languages, since loadManifest() skips them. Throws
  /// vesk::ConversionError when the value of a section does not convert to the type it has here.
  PackageInfo(const PackageInfo2& info);
  ~PackageInfo();

  /// The package's identifier.
  const std::string& uuid() const;
  void setUuid(const std::string& uuid);
  const std::string& version() const;
  void setVersion(const std::string& version);
  const std::string& author() const;
  void setAuthor(const std::string& author);
  const std::string& organization() const;
  void setOrganization(const std::string& organization);
  const std::string& date() const;
  void setDate(const std::string& date);
  /// The version of the manifest's format.
  const std::string& typeVersion() const;
  void setTypeVersion(const std::string& typeVersion);
  /// The channel through which the package is distributed.
  const std::string& channel() const;
  void setChannel(const std::string& channel);
  /// What installed the package: a text carried along, not part of the manifest.
  const std::string& installer() const;
  void setInstaller(const std::string& installer);
  /// Where the package lies on disk: a text carried along, not part of the manifest.
  const std::string& path() const;
  void setPath(const std::string& path);

  /// Texts by language. The getters return the text stored for exactly this language; when there is
  /// none, an empty text that lives to the end of the program.
  /// \{
  const std::string& name(const std::string& lang) const;
  const std::map<std::string, std::string>& names() const;
  /// Only clearNames() and trimExtraInfo() take out again what is set. An empty text is not written.
  void setName(const std::string& name, const std::string& lang);
  void clearNames();
  const std::string& description(const std::string& lang) const;
  const std::map<std::string, std::string>& descriptions() const;
  /// Only trimExtraInfo() takes out again what is set. An empty text is not written.
  void setDescription(std::string description, const std::string& lang);
  /// \}

  /// Lists. add appends a copy, also of an equal element. Only clear takes out again what is added,
  /// and all at once; of behaviors, the list itself can be had.
  /// \{
  const std::list<PackageService>& services() const;
  void addService(const PackageService& service);
  void clearServices();

  /// Paths relative to the package.
  const std::list<std::string>& executableFiles() const;
  /// No operation takes out again what is added.
  void addExecutableFile(const std::string& path);

  const std::list<RobotRequirement>& robotRequirements() const;
  void addRobotRequirement(const RobotRequirement& requirement);
  void clearRobotRequirements();

  const std::list<MirelRequirement>& mirelRequirements() const;
  void addMirelRequirement(const MirelRequirement& requirement);
  void clearMirelRequirements();

  const std::list<BehaviorInfo>& behaviors() const;
  /// The package's own list, to change behaviors in place.
  std::list<BehaviorInfo>& behaviors();
  bool hasBehavior() const;
  void addBehavior(const BehaviorInfo& behavior);
  void clearBehaviors();

  const std::list<DialogInfo>& dialogs() const;
  void addDialog(const DialogInfo& dialog);
  void clearDialogs();

  const std::list<LanguageInfo>& languages() const;
  /// No operation takes out again what is added.
  void addLanguage(const LanguageInfo& language);
  /// \}

  /// Language codes without duplicates: add does nothing when the list has the very same text.
  /// \{
  const std::list<std::string>& supportedLanguages() const;
  void addSupportedLanguage(const std::string& language);
  void removeSupportedLanguage(const std::string& language);
  void clearSupportedLanguages();

  const std::list<std::string>& descriptionLanguages() const;
  void addDescriptionLanguage(const std::string& language);
  void removeDescriptionLanguage(const std::string& language);
  void clearDescriptionLanguages();
  /// \}

  /// Strips the package down to the languages it is described in: drops the names and descriptions
  /// whose language begins with none of the description languages, and trims every behavior by the
  /// description and the supported languages (see BehaviorInfo::trimExtraInfo).
  void trimExtraInfo();

  /// Reads a manifest into this package: sets the seven texts of the root (to empty where the
  /// manifest lacks them), adds or replaces names and descriptions by language, and appends to every
  /// list. What the manifest format does not know is skipped; but in lists of texts or languages,
  /// every child is an entry, so that a comment gives an empty text or language.
  ///
  /// False when the file cannot be opened or is not well-formed, and the package is unchanged then;
  /// a message in the log category "veskpackage", at the level of errors, says why and where. A
  /// manifest that would cost the parser too much stack, memory or time is treated as not
  /// well-formed: elements nested more than 256 deep, elements with more than 1,024 attributes,
  /// in a text more than 32 namespace prefixes declared at once, and a document type with more than
  /// 256 nested parentheses or 256 entities, or whose entities hold more than 1,048,576 characters
  /// or 1,024 references or bring in more than 1,048,576 characters. External entities are never
  /// read.
  /// \{

  /// Reads the file at \p path (UTF-8).
  bool loadFromManifestFile(const std::string& path);
  /// Reads a file that is not open yet, and closes it.
  bool loadFromManifestFile(QFile& file);
  /// Reads the text of a manifest, up to the first NUL byte. Unlike files, it is read with namespace
  /// processing: an attribute with a declared prefix is identified by its name without the prefix.
  /// The message logged for a malformed text contains the whole text.
  bool loadFromManifestContent(const std::string& content);
  /// \}

  /// Like the operations above, but nothing is logged: on failure \p error says what is wrong; on
  /// success it is unchanged. A file that cannot be read to its end is an error here, whereas the
  /// operations above use the part that they could read.
  /// \{

  /// Reads the file at \p path (UTF-8).
  bool readManifestFile(const std::string& path, LoadError& error);
  /// Reads an open device from its current position to its end, like a file, and leaves it open.
  bool readManifestDevice(QIODevice& device, LoadError& error);
  /// Reads the text of a manifest, up to the first NUL byte, with namespace processing.
  bool readManifestText(const std::string& text, LoadError& error);
  /// \}

  /// Writes the manifest. Equal packages give equal bytes; attributes are ordered by name. Empty
  /// names, descriptions, texts of behaviors and topics are left out, and so is what XML cannot
  /// carry: what follows a NUL byte, control characters, U+FFFE and U+FFFF, permissions that are no
  /// XML names. Text of blanks only (of any script) is written, but readers drop it unless it is a
  /// condition. Invalid UTF-8 is written as U+FFFD.
  /// \{

  /// Writes or overwrites the file at \p path (UTF-8), indented by 2. False when it cannot be
  /// opened; true does not mean that everything could be written, as on a full disk.
  bool saveToManifestFile(const std::string& path) const;
  /// The same with a file that is not open yet; closes it.
  bool saveToManifestFile(QFile& file) const;
  /// The manifest as UTF-8 text, indented by 1.
  std::string saveToManifestContent() const;
  /// \}

  /// Makes \p out the package's variant form: an array of pairs [name, value] in a fixed order,
  /// from "uuid" to "descriptionLanguages". Maps are arrays of pairs [language, text]. A package
  /// with an empty uuid has no such form and gives an array of size 0.
  void toXOValue(XO::XOValue& out);

private:
  friend struct RecordAccess;
  std::unique_ptr<PackageInfoPrivate> record;
};

/// Prints the package as labelled lines, each flushed as it is written, with a block for each
/// language pack, behavior and dialog. It is meant for people and cannot be read back; installer,
/// description languages, services and executable files are not in it.
VESKPACKAGE_EXPORT std::ostream& operator<<(std::ostream& out, const PackageInfo& package);

} // namespace vesk

#endif
