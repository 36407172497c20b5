// SPDX-License-Identifier: Apache-2.0
#ifndef FORMAT_FORMAT_HPP
#define FORMAT_FORMAT_HPP

#include <format/export.hpp>

#include <string>
#include <string_view>
#include <vector>

/// The format of a manifest, described once: which elements and attributes there are, where, what they
/// mean, and which field of a record holds what they say. The checker goes by it, and the schemas, the
/// tables in docs/manifest.md and the fuzzers' dictionary are made from it.
namespace vesk::format
{

/// What a text is: the value of an attribute, or what an element holds.
enum class Type
{
  Text,     ///< any
  Language, ///< the code of a language, such as "en_US"
  Path,     ///< of a file or folder, relative to the package
  PathStem, ///< the same; the extension of a file may be missing
  Version,  ///< numbers with dots between them, where programs compare them
  Flag      ///< "true" or "false"
};

/// Who reads it.
enum class Readers
{
  Both,
  PackageInfo, ///< PackageInfo::loadFromManifestFile() and its siblings only
  LoadManifest ///< loadManifest() only
};

/// When it is written for a package. An element that is written without content is an empty
/// element.
enum class Written
{
  Always,
  UnlessEmpty,
  UnlessIncomplete, ///< unless one of its attributes is empty
  IfTrue,
  Never
};

/// What trimming a package to its languages keeps of a field.
enum class Keeps
{
  All,
  DescriptionLanguages,
  SupportedLanguages
};

/// A field of a record.
struct Field
{
  std::string record;     ///< the type of the record, as in "::vesk::BehaviorInfo"
  std::string registered; ///< the member's name in the type system: "langToName"
  std::string name; ///< the member's name for people, in the variant form and field paths: "names"
  Keeps keeps = Keeps::All;
};

/// What elements and attributes have in common. All text is UTF-8.
struct Entry
{
  std::string name;
  std::string meaning;            ///< what it is for, in sentences
  std::string absent;             ///< what it means that there is none, in a few words
  std::string example;            ///< a value; of an element, its text
  Type type = Type::Text;         ///< of an element, the type of its text
  std::vector<std::string> usual; ///< values that programs know; a Text may have others, too
  /// Whether the schemas refuse a manifest that lacks it, or has it empty. The readers do not mind.
  bool isRequired = false;
  Written written = Written::UnlessEmpty;
  Readers readers = Readers::Both;
  /// The field that holds the value of an attribute, the text in an element or the entries of a
  /// list. An element that may be repeated is one entry of the field. Field::name is empty when no
  /// field holds it.
  Field field;
};

/// What the value of an attribute is to the field of the element around it.
enum class Role
{
  Own,  ///< nothing: it has a field of its own
  Key,  ///< the key of an entry, such as the language of a text
  Value ///< the entry itself
};

struct Attribute : Entry
{
  Role role = Role::Own;
};

/// What the readers take from an element, beside its attributes.
enum class Holds
{
  Nothing,
  Presence, ///< that it is there
  Text,     ///< all text in it
  Elements, ///< the children that the format names
  Entries,  ///< every child, whatever its name; the usual one is the only one in the format
  Names     ///< the names of those children that are in the format
};

/// What becomes of an element that comes several times.
enum class Several
{
  Count,             ///< all count
  CountForOneReader, ///< all count for PackageInfo, only the last for loadManifest()
  CountOnce,         ///< equal ones count once
  LastCounts,
  LastOfKeyCounts ///< of those with the same key, only the last counts
};

struct Element : Entry
{
  Holds holds = Holds::Nothing;
  /// Whether it is meant to come several times. A schema allows other elements only once.
  bool isRepeatable = false;
  Several several = Several::Count;
  /// Best written as a CDATA section, and written so.
  bool isCdata = false;
  std::vector<Attribute> attributes; ///< in the order in which people write them
  std::vector<Element> children;     ///< in the order in which they are written
};

/// Where a manifest holds a field.
struct Place
{
  const Element* element = nullptr;     ///< null where it does not
  const Attribute* attribute = nullptr; ///< null where the element itself holds the field
};

// The descriptions that these functions refer to live to the end of the program; any thread may
// read them.

/// The root.
VESKPACKAGE_FORMAT_EXPORT const Element& package();

/// The element at a path like "/package/contents/webContent"; null when there is none.
VESKPACKAGE_FORMAT_EXPORT const Element* find(std::string_view path);

/// The elements that may contain an element of this name; of several with the same name only the
/// first. Empty when there is none.
VESKPACKAGE_FORMAT_EXPORT std::vector<const Element*> homesOf(std::string_view name);

/// Every field that a manifest holds, in the order of the format.
VESKPACKAGE_FORMAT_EXPORT std::vector<Field> fields();

/// Where a manifest holds a field, given by the type of its record and its registered name.
VESKPACKAGE_FORMAT_EXPORT Place placeOf(const std::string& record, const std::string& registered);

/// The attribute of an element that has a role; null when none has.
VESKPACKAGE_FORMAT_EXPORT const Attribute* attributeFor(const Element& element, Role role);

/// The element as XML, with each attribute and child once, filled with the examples; one line per
/// element, indented by 2, without a line break at the end. For the root this is a manifest.
VESKPACKAGE_FORMAT_EXPORT std::string exampleOf(const Element& element);

} // namespace vesk::format

#endif
