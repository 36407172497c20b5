// SPDX-License-Identifier: Apache-2.0
#include <package/behaviorinfo.hpp>
#include <package/behaviorinfo_p.hpp>
#include <package/languagecodes.hpp>
#include <package/listmaps.hpp>
#include <package/recordaccess.hpp>
#include <package/trimming.hpp>

#include <algorithm>
#include <utility>

namespace vesk
{

const std::string& BehaviorInfo::natureInteractive()
{
  static const std::string nature("interactive");
  return nature;
}

const std::string& BehaviorInfo::natureSolitary()
{
  static const std::string nature("solitary");
  return nature;
}

const std::list<std::string>& BehaviorInfo::supportedPermissions()
{
  static const std::list<std::string> permissions{k_permCanRunInSleep, k_permCanRunOnPod,
                                                  k_permCanStandUp, k_permCanSitDown};
  return permissions;
}

BehaviorInfo::BehaviorInfo() : record(std::make_unique<BehaviorInfoPrivate>())
{
  record->owner = this;
}

BehaviorInfo::BehaviorInfo(const BehaviorInfo& other)
    : record(std::make_unique<BehaviorInfoPrivate>(*other.record))
{
  record->owner = this;
}

BehaviorInfo::BehaviorInfo(BehaviorInfo&& other) noexcept : record(std::move(other.record))
{
  if (record)
  {
    record->owner = this;
  }
}

BehaviorInfo BehaviorInfo::operator=(const BehaviorInfo& other)
{
  BehaviorInfo copy(other); // first: when memory runs out, nothing is assigned
  assignRecord(record, other.record);
  record->owner = this;
  return copy;
}

BehaviorInfo::~BehaviorInfo() = default;

std::string BehaviorInfo::path() const { return record->path; }

void BehaviorInfo::setPath(const std::string& path) { record->path = path; }

std::string BehaviorInfo::nature() const { return record->nature; }

void BehaviorInfo::setNature(const std::string& nature) { record->nature = nature; }

bool BehaviorInfo::isUserRequestable() const { return record->userRequestable; }

void BehaviorInfo::setUserRequestable(bool requestable) { record->userRequestable = requestable; }

std::string BehaviorInfo::name(const std::string& lang) const
{
  return textOrEmpty(record->langToName, lang);
}

const std::map<std::string, std::string>& BehaviorInfo::names() const { return record->langToName; }

void BehaviorInfo::setName(const std::string& name, const std::string& lang)
{
  record->langToName[lang] = name;
}

std::string BehaviorInfo::description(const std::string& lang) const
{
  return textOrEmpty(record->langToDesc, lang);
}

const std::map<std::string, std::string>& BehaviorInfo::descriptions() const
{
  return record->langToDesc;
}

void BehaviorInfo::setDescription(const std::string& description, const std::string& lang)
{
  record->langToDesc[lang] = description;
}

std::list<std::string> BehaviorInfo::permissions() const { return record->permissions; }

bool BehaviorInfo::hasPermission(const std::string& permission) const
{
  const std::list<std::string>& held = record->permissions;
  return std::find(held.begin(), held.end(), permission) != held.end();
}

bool BehaviorInfo::addPermission(const std::string& permission)
{
  const std::list<std::string>& supported = supportedPermissions();
  if (hasPermission(permission) ||
      std::find(supported.begin(), supported.end(), permission) == supported.end())
  {
    return false;
  }
  record->permissions.push_back(permission);
  return true;
}

bool BehaviorInfo::removePermission(const std::string& permission)
{
  std::list<std::string>& held = record->permissions;
  const auto found = std::find(held.begin(), held.end(), permission);
  if (found == held.end())
  {
    return false;
  }
  held.erase(found);
  return true;
}

std::list<std::string> BehaviorInfo::tags(const std::string& lang) const
{
  const auto entry = record->langToTags.find(lang);
  return entry == record->langToTags.end() ? std::list<std::string>() : entry->second;
}

void BehaviorInfo::addTag(const std::string& tag, const std::string& lang)
{
  appendStringInMapOfListOfString(record->langToTags, lang, tag);
}

void BehaviorInfo::insertTag(const std::string& tag, const std::string& lang, int index)
{
  insertStringInMapOfListOfString(record->langToTags, lang, tag, index);
}

bool BehaviorInfo::updateTag(const std::string& oldTag, const std::string& newTag,
                             const std::string& lang)
{
  return updateStringInMapOfListOfString(record->langToTags, lang, oldTag, newTag);
}

bool BehaviorInfo::removeTag(const std::string& tag, const std::string& lang)
{
  return removeStringInMapOfListOfString(record->langToTags, lang, tag);
}

// Unlike tags, the next three families leave an empty list behind when an unknown key is read;
// it shows in the report.

std::list<std::string> BehaviorInfo::triggerSentences(const std::string& lang) const
{
  return record->langToTriggerSentences[lang];
}

void BehaviorInfo::addTriggerSentence(const std::string& sentence, const std::string& lang)
{
  appendStringInMapOfListOfString(record->langToTriggerSentences, lang, sentence);
}

void BehaviorInfo::insertTriggerSentence(const std::string& sentence, const std::string& lang,
                                         int index)
{
  insertStringInMapOfListOfString(record->langToTriggerSentences, lang, sentence, index);
}

bool BehaviorInfo::updateTriggerSentence(const std::string& oldSentence,
                                         const std::string& newSentence, const std::string& lang)
{
  return updateStringInMapOfListOfString(record->langToTriggerSentences, lang, oldSentence,
                                         newSentence);
}

bool BehaviorInfo::removeTriggerSentence(const std::string& sentence, const std::string& lang)
{
  return removeStringInMapOfListOfString(record->langToTriggerSentences, lang, sentence);
}

std::list<std::string> BehaviorInfo::loadingResponses(const std::string& lang) const
{
  return record->langToLoadingResponses[lang];
}

void BehaviorInfo::addLoadingResponse(const std::string& response, const std::string& lang)
{
  appendStringInMapOfListOfString(record->langToLoadingResponses, lang, response);
}

void BehaviorInfo::insertLoadingResponse(const std::string& response, const std::string& lang,
                                         int index)
{
  insertStringInMapOfListOfString(record->langToLoadingResponses, lang, response, index);
}

bool BehaviorInfo::updateLoadingResponse(const std::string& oldResponse,
                                         const std::string& newResponse, const std::string& lang)
{
  return updateStringInMapOfListOfString(record->langToLoadingResponses, lang, oldResponse,
                                         newResponse);
}

bool BehaviorInfo::removeLoadingResponse(const std::string& response, const std::string& lang)
{
  return removeStringInMapOfListOfString(record->langToLoadingResponses, lang, response);
}

std::list<std::string> BehaviorInfo::conditions(const std::string& purpose) const
{
  return record->purposeToCondition[purpose];
}

void BehaviorInfo::addCondition(const std::string& condition, const std::string& purpose)
{
  appendStringInMapOfListOfString(record->purposeToCondition, purpose, condition);
}

void BehaviorInfo::insertCondition(const std::string& condition, const std::string& purpose,
                                   int index)
{
  insertStringInMapOfListOfString(record->purposeToCondition, purpose, condition, index);
}

bool BehaviorInfo::updateCondition(const std::string& oldCondition, const std::string& newCondition,
                                   const std::string& purpose)
{
  return updateStringInMapOfListOfString(record->purposeToCondition, purpose, oldCondition,
                                         newCondition);
}

bool BehaviorInfo::removeCondition(const std::string& condition, const std::string& purpose)
{
  return removeStringInMapOfListOfString(record->purposeToCondition, purpose, condition);
}

const std::map<std::string, std::list<std::string>>& BehaviorInfo::languagesToTags() const
{
  return record->langToTags;
}

const std::map<std::string, std::list<std::string>>&
BehaviorInfo::languagesToTriggerSentences() const
{
  return record->langToTriggerSentences;
}

const std::map<std::string, std::list<std::string>>&
BehaviorInfo::languagesToLoadingResponses() const
{
  return record->langToLoadingResponses;
}

const std::map<std::string, std::list<std::string>>& BehaviorInfo::purposesToConditions() const
{
  return record->purposeToCondition;
}

void BehaviorInfo::trimExtraInfo(std::list<std::string> descriptionLanguages,
                                 std::list<std::string> supportedLanguages)
{
  record->trimExtraInfo(std::move(descriptionLanguages), std::move(supportedLanguages));
}

// By value, as the handle's operation takes them.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void BehaviorInfoPrivate::trimExtraInfo(std::list<std::string> descriptionLanguages,
                                        // NOLINTNEXTLINE(performance-unnecessary-value-param)
                                        std::list<std::string> supportedLanguages)
{
  trimMembers(*this, descriptionLanguages, supportedLanguages);
}

} // namespace vesk
