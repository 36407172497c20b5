// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_BEHAVIORINFO_P_HPP
#define PACKAGE_BEHAVIORINFO_P_HPP

#include <package/recordmember.hpp>

#include <array>
#include <list>
#include <map>
#include <string>
#include <tuple>

class QDomDocument;
class QDomNode;

namespace vesk
{

class BehaviorInfo;
class XmlNode;

/// What a BehaviorInfo holds. Maps are keyed by language code, but for the conditions.
struct BehaviorInfoPrivate
{
  std::string path;   ///< relative to the package
  std::string nature; ///< "interactive", "solitary" or any other text
  std::map<std::string, std::string> langToName;
  std::map<std::string, std::string> langToDesc;
  std::string categories; ///< carried along; neither the handle nor a manifest gives access to it
  std::map<std::string, std::list<std::string>> langToTags;
  std::map<std::string, std::list<std::string>> langToTriggerSentences; ///< what a user may say
  std::map<std::string, std::list<std::string>> langToLoadingResponses; ///< said while loading
  std::map<std::string, std::list<std::string>> purposeToCondition;     ///< when it is launched
  std::list<std::string> permissions; ///< supported ones, each at most once
  bool userRequestable = false;

  /// The handle that owns this record. Copying a record copies it, so the new handle must reset it.
  BehaviorInfo* owner = nullptr;

  void trimExtraInfo(std::list<std::string> descriptionLanguages,
                     std::list<std::string> supportedLanguages);

  /// Adds what a "behaviorContent" element holds to the record of the owner. Always true.
  bool loadFromManifest(QDomNode& node);
  bool loadFromManifest(const XmlNode& node);
  /// Appends a "behaviorContent" element to \p parent.
  void saveToManifest(QDomDocument& doc, QDomNode& parent) const;
};

template <>
struct StructDescription<BehaviorInfoPrivate>
{
  using Record = BehaviorInfoPrivate;
  static constexpr auto name = "::vesk::BehaviorInfoPrivate";
  static constexpr auto publicName = "::vesk::BehaviorInfo";
  static constexpr auto members = std::make_tuple(
      recordMember("path", "path", &Record::path),
      recordMember("nature", "nature", &Record::nature),
      recordMember("langToName", "names", &Record::langToName, Keeps::DescriptionLanguages),
      recordMember("langToDesc", "descriptions", &Record::langToDesc, Keeps::DescriptionLanguages),
      // The variant form has never contained categories, only an empty value in their place.
      recordMember("categories", "categories", &Record::categories, InVariant::Empty),
      recordMember("langToTags", "tags", &Record::langToTags, Keeps::SupportedLanguages),
      recordMember("langToTriggerSentences", "triggerSentences", &Record::langToTriggerSentences,
                   Keeps::SupportedLanguages),
      recordMember("langToLoadingResponses", "loadingResponses", &Record::langToLoadingResponses,
                   Keeps::SupportedLanguages),
      recordMember("purposeToCondition", "conditions", &Record::purposeToCondition, Keeps::All),
      recordMember("permissions", "permissions", &Record::permissions),
      recordMember("userRequestable", "userRequestable", &Record::userRequestable));
  static constexpr std::array addedFields{"userRequestable"};
};

inline auto allMembers(const BehaviorInfoPrivate& record)
{
  const auto& [path, nature, names, descriptions, categories, tags, sentences, responses,
               conditions, permissions, userRequestable, owner] = record;
  static_cast<void>(owner); // no field
  return std::tie(path, nature, names, descriptions, categories, tags, sentences, responses,
                  conditions, permissions, userRequestable);
}

static_assert(describesAllMembers<BehaviorInfoPrivate>);

} // namespace vesk

#endif
