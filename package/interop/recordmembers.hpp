// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_INTEROP_RECORDMEMBERS_HPP
#define PACKAGE_INTEROP_RECORDMEMBERS_HPP

#include <package/behaviorinfo_p.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/languageinfo_p.hpp>
#include <package/packageinfo_p.hpp>
#include <vesk/structdescription.hpp>

#include <array>
#include <string_view>
#include <tuple>

/// The members of the records behind the public classes, in the order in which the type system
/// publishes them and in which they stand in the variant form. Peers rely on names and order.
namespace vesk
{

/// Whether a member's value is in the variant form, or an empty value in its place.
enum class InVariant
{
  Value,
  Empty
};

template <typename Record, typename Value>
struct RecordMember
{
  const char* name;             ///< in the type system
  std::string_view variantName; ///< in the variant form
  Value Record::*pointer;
  InVariant inVariant;
};

template <typename Record, typename Value>
constexpr RecordMember<Record, Value> recordMember(const char* name, const char* variantName,
                                                   Value Record::*pointer,
                                                   InVariant inVariant = InVariant::Value)
{
  return {name, variantName, pointer, inVariant};
}

template <>
struct StructDescription<DialogInfoPrivate>
{
  using Record = DialogInfoPrivate;
  static constexpr auto name = "::vesk::DialogInfoPrivate";
  static constexpr auto members =
      std::make_tuple(recordMember("topicName", "topicName", &Record::topicName),
                      recordMember("typeVersion", "typeVersion", &Record::typeVersion),
                      recordMember("topics", "topics", &Record::topics));
};

template <>
struct StructDescription<BehaviorInfoPrivate>
{
  using Record = BehaviorInfoPrivate;
  static constexpr auto name = "::vesk::BehaviorInfoPrivate";
  static constexpr auto members = std::make_tuple(
      recordMember("path", "path", &Record::path),
      recordMember("nature", "nature", &Record::nature),
      recordMember("langToName", "names", &Record::langToName),
      recordMember("langToDesc", "descriptions", &Record::langToDesc),
      // No module has ever been given categories in the variant form; the place is kept.
      recordMember("categories", "categories", &Record::categories, InVariant::Empty),
      recordMember("langToTags", "tags", &Record::langToTags),
      recordMember("langToTriggerSentences", "triggerSentences", &Record::langToTriggerSentences),
      recordMember("langToLoadingResponses", "loadingResponses", &Record::langToLoadingResponses),
      recordMember("purposeToCondition", "conditions", &Record::purposeToCondition),
      recordMember("permissions", "permissions", &Record::permissions),
      recordMember("userRequestable", "userRequestable", &Record::userRequestable));
  static constexpr std::array addedFields{"userRequestable"};
};

template <>
struct StructDescription<LanguageInfoPrivate>
{
  using Record = LanguageInfoPrivate;
  static constexpr auto name = "vesk::LanguageInfoPrivate"; // without "::": peers know it by that
  static constexpr auto members =
      std::make_tuple(recordMember("path", "path", &Record::path),
                      recordMember("engineName", "engineName", &Record::engineName),
                      recordMember("engineVersion", "engineVersion", &Record::engineVersion),
                      recordMember("locale", "locale", &Record::locale),
                      recordMember("langToName", "names", &Record::langToName));
};

template <>
struct StructDescription<PackageInfoPrivate>
{
  using Record = PackageInfoPrivate;
  static constexpr auto name = "::vesk::PackageInfoPrivate";
  static constexpr auto members = std::make_tuple(
      recordMember("uuid", "uuid", &Record::uuid), recordMember("path", "path", &Record::path),
      recordMember("version", "version", &Record::version),
      recordMember("channel", "channel", &Record::channel),
      recordMember("author", "author", &Record::author),
      recordMember("organization", "organization", &Record::organization),
      recordMember("date", "date", &Record::date),
      recordMember("typeVersion", "typeVersion", &Record::typeVersion),
      recordMember("langToName", "names", &Record::langToName),
      recordMember("langToDesc", "descriptions", &Record::langToDesc),
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

template <typename Record>
constexpr std::size_t describedMembers =
    std::tuple_size_v<std::decay_t<decltype(StructDescription<Record>::members)>>;

/// All members of a record. When one is added, these do not compile until it is named here, and then
/// not until it stands in the table above (or, of a plain record, beside that).
/// \{
inline auto allMembers(const DialogInfoPrivate& record)
{
  const auto& [topicName, typeVersion, topics] = record;
  return std::tie(topicName, typeVersion, topics);
}

inline auto allMembers(const BehaviorInfoPrivate& record)
{
  const auto& [path, nature, names, descriptions, categories, tags, sentences, responses,
               conditions, permissions, userRequestable, owner] = record;
  static_cast<void>(owner); // no field
  return std::tie(path, nature, names, descriptions, categories, tags, sentences, responses,
                  conditions, permissions, userRequestable);
}

inline auto allMembers(const LanguageInfoPrivate& record)
{
  const auto& [path, engineName, engineVersion, locale, names, owner] = record;
  static_cast<void>(owner); // no field
  return std::tie(path, engineName, engineVersion, locale, names);
}

inline auto allMembers(const PackageInfoPrivate& record)
{
  const auto& [installer, uuid, path, version, channel, author, organization, date, typeVersion,
               names, descriptions, supportedLanguages, descriptionLanguages, behaviors, dialogs,
               languages, robotRequirements, mirelRequirements, services, executableFiles] = record;
  return std::tie(installer, uuid, path, version, channel, author, organization, date, typeVersion,
                  names, descriptions, supportedLanguages, descriptionLanguages, behaviors, dialogs,
                  languages, robotRequirements, mirelRequirements, services, executableFiles);
}

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
/// \}

template <typename... Records>
constexpr bool describeAllMembers =
    ((describedMembers<Records> ==
      std::tuple_size_v<decltype(allMembers(std::declval<const Records&>()))>)&&...);

static_assert(
    describeAllMembers<DialogInfoPrivate, BehaviorInfoPrivate, LanguageInfoPrivate,
                       PackageInfoPrivate, RobotRequirement, MirelRequirement, PackageService>,
    "a member of a record is not described");
static_assert(describedMembers<PackageInfoPrivate> == PackageInfoPrivate::fieldsCount);

} // namespace vesk

#endif
