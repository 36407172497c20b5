// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_BEHAVIORINFO_HPP
#define PACKAGE_BEHAVIORINFO_HPP

#include <package/export.hpp>

#include <iosfwd>
#include <list>
#include <map>
#include <memory>
#include <string>

namespace XO
{
class XOValue;
}

namespace vesk
{

struct BehaviorInfoPrivate;
struct RecordAccess;

/// Describes one behavior of a package: where it lies, its nature, what it is called in which
/// language, what it reacts to, and what it may do.
///
/// | What                               | Accessors                     | Form                    |
/// |------------------------------------|-------------------------------|-------------------------|
/// | path                               | path, setPath                 | relative to the package |
/// | nature                             | nature, setNature             | "interactive", …        |
/// | user requestable                   | isUserRequestable, …          | bool                    |
/// | names, descriptions                | name, names, setName, …       | language to text        |
/// | tags                               | tags, addTag, …               | language to texts       |
/// | trigger sentences                  | addTriggerSentence, …         | language to texts       |
/// | loading responses                  | addLoadingResponse, …         | language to texts       |
/// | conditions                         | conditions, addCondition, …   | purpose to texts        |
/// | permissions                        | permissions, addPermission, … | names, each once        |
///
/// In a manifest it is one element:
/// \code{.xml}
/// <behaviorContent path="greeting/hello">
///   <userRequestable/>
///   <nature>interactive</nature>
///   <names><name lang="en_US">Hello</name></names>
///   <tags><tag lang="en_US">greeting</tag></tags>
///   <triggerSentences><sentence lang="en_US">say hello</sentence></triggerSentences>
///   <loadingResponses><sentence lang="en_US">Gladly</sentence></loadingResponses>
///   <autonomous><condition purpose="launch"><![CDATA[people > 0]]></condition></autonomous>
///   <permissions><canStandUp/></permissions>
/// </behaviorContent>
/// \endcode
///
/// To the type system a behavior is the struct "::vesk::BehaviorInfo". It converts from and to the
/// version of peers that lack "userRequestable".
///
/// All text is UTF-8. In argument lists the value comes first, then the language or purpose, then
/// the index. No operation checks a language code, and none reports an error. A copy shares nothing
/// with its source. A moved-from object may only be destroyed or assigned to. An object must not be
/// used by two threads at once, not even for reading: some reads change it.
class VESKPACKAGE_EXPORT BehaviorInfo
{
public:
  /// The permissions a behavior can claim.
  /// \{
  inline static const std::string k_permCanRunInSleep = "canRunInSleep";
  inline static const std::string k_permCanRunOnPod = "canRunOnPod";
  inline static const std::string k_permCanStandUp = "canStandUp";
  inline static const std::string k_permCanSitDown = "canSitDown";
  /// \}

  /// The natures known so far; setNature takes any text.
  /// \{
  static const std::string& natureInteractive();
  static const std::string& natureSolitary();
  /// \}

  /// The four permissions above, in that order. The list lives to the end of the program.
  static const std::list<std::string>& supportedPermissions();

  /// An empty behavior: no path, no nature, not user requestable.
  BehaviorInfo();
  BehaviorInfo(const BehaviorInfo& other);
  BehaviorInfo(BehaviorInfo&& other) noexcept;
  /// Copies all of \p other. Returns another copy, not a reference to this object.
  BehaviorInfo operator=(const BehaviorInfo& other);
  /// A behavior from its variant form: an array of pairs [name, value]. Pairs are identified by
  /// name, in any order; unknown ones are skipped, and repeated ones add to maps and lists.
  /// Adjacent equal permissions become one; whether they are supported is not checked. Any other
  /// value gives an empty behavior; a part of the wrong kind is read as an empty value.
  BehaviorInfo(const XO::XOValue& value);
  ~BehaviorInfo();

  std::string path() const;
  void setPath(const std::string& path);

  std::string nature() const;
  void setNature(const std::string& nature);

  bool isUserRequestable() const;
  void setUserRequestable(bool requestable);

  /// The name stored for exactly this language; empty when there is none.
  std::string name(const std::string& lang) const;
  const std::map<std::string, std::string>& names() const;
  /// Only trimExtraInfo() takes out again what is set. An empty text is not written to manifests.
  void setName(const std::string& name, const std::string& lang);

  /// The description stored for exactly this language; empty when there is none.
  std::string description(const std::string& lang) const;
  const std::map<std::string, std::string>& descriptions() const;
  /// As with setName(), only trimExtraInfo() takes out again what is set.
  void setDescription(const std::string& description, const std::string& lang);

  /// The permissions claimed, in the order in which they were added.
  std::list<std::string> permissions() const;
  bool hasPermission(const std::string& permission) const;
  /// False, and nothing is added, when \p permission is claimed already or is not supported.
  bool addPermission(const std::string& permission);
  /// False when \p permission is not claimed.
  bool removePermission(const std::string& permission);

  /// Lists of texts per language (conditions: per purpose). The same holds for each of the four:
  /// - add appends; equal texts may repeat;
  /// - insert puts the text before the one at \p index, counted from 0, and appends it when there
  ///   is none at that index;
  /// - update replaces the first text equal to the old one, remove erases the first equal one;
  ///   both give false when there is none. A list that becomes empty stays under its key, and
  ///   is not written to manifests; only trimExtraInfo() takes out keys, and none of conditions.
  ///
  /// Reading tags of an unknown language changes nothing. Reading the trigger sentences, loading
  /// responses or conditions of an unknown key leaves an empty list under that key.
  /// \{
  std::list<std::string> tags(const std::string& lang) const;
  void addTag(const std::string& tag, const std::string& lang);
  void insertTag(const std::string& tag, const std::string& lang, int index);
  bool updateTag(const std::string& oldTag, const std::string& newTag, const std::string& lang);
  bool removeTag(const std::string& tag, const std::string& lang);

  std::list<std::string> triggerSentences(const std::string& lang) const;
  void addTriggerSentence(const std::string& sentence, const std::string& lang);
  void insertTriggerSentence(const std::string& sentence, const std::string& lang, int index);
  bool updateTriggerSentence(const std::string& oldSentence, const std::string& newSentence,
                             const std::string& lang);
  bool removeTriggerSentence(const std::string& sentence, const std::string& lang);

  std::list<std::string> loadingResponses(const std::string& lang) const;
  void addLoadingResponse(const std::string& response, const std::string& lang);
  void insertLoadingResponse(const std::string& response, const std::string& lang, int index);
  bool updateLoadingResponse(const std::string& oldResponse, const std::string& newResponse,
                             const std::string& lang);
  bool removeLoadingResponse(const std::string& response, const std::string& lang);

  std::list<std::string> conditions(const std::string& purpose) const;
  void addCondition(const std::string& condition, const std::string& purpose);
  void insertCondition(const std::string& condition, const std::string& purpose, int index);
  bool updateCondition(const std::string& oldCondition, const std::string& newCondition,
                       const std::string& purpose);
  bool removeCondition(const std::string& condition, const std::string& purpose);
  /// \}

  /// The whole maps, language or purpose to texts; valid until this object is changed or destroyed.
  /// \{
  const std::map<std::string, std::list<std::string>>& languagesToTags() const;
  const std::map<std::string, std::list<std::string>>& languagesToTriggerSentences() const;
  const std::map<std::string, std::list<std::string>>& languagesToLoadingResponses() const;
  const std::map<std::string, std::list<std::string>>& purposesToConditions() const;
  /// \}

  /// Drops the names and descriptions whose language does not begin with one of
  /// \p descriptionLanguages, and the tags, loading responses and trigger sentences whose language
  /// does not begin with one of \p supportedLanguages. So "en" keeps "en_US"; an empty list drops
  /// all.
  void trimExtraInfo(std::list<std::string> descriptionLanguages,
                     std::list<std::string> supportedLanguages);

  /// Makes \p out the behavior's variant form: an array of 11 pairs [name, value], from "path" to
  /// "userRequestable". "categories" is always an empty value.
  void toXOValue(XO::XOValue& out) const;

private:
  friend struct RecordAccess;
  std::unique_ptr<BehaviorInfoPrivate> record;
};

/// Prints the behavior as a block of labelled lines, each flushed as it is written. It is meant for
/// people and cannot be read back.
VESKPACKAGE_EXPORT std::ostream& operator<<(std::ostream& out, const BehaviorInfo& behavior);

} // namespace vesk

#endif
