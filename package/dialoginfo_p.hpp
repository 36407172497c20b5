// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_DIALOGINFO_P_HPP
#define PACKAGE_DIALOGINFO_P_HPP

#include <package/recordmember.hpp>

#include <map>
#include <string>
#include <tuple>

namespace vesk
{

class XmlNode;

/// What a DialogInfo holds.
struct DialogInfoPrivate
{
  std::string topicName;
  std::string typeVersion = "1.0";
  std::map<std::string, std::string> topics; ///< language to path of the topic file

  /// Adds what a "dialogContent" element holds. Always true.
  bool loadFromManifest(const XmlNode& element);
};

template <>
struct StructDescription<DialogInfoPrivate>
{
  using Record = DialogInfoPrivate;
  static constexpr auto name = "::vesk::DialogInfoPrivate";
  static constexpr auto publicName = "::vesk::DialogInfo";
  static constexpr auto members =
      std::make_tuple(recordMember("topicName", "topicName", &Record::topicName),
                      recordMember("typeVersion", "typeVersion", &Record::typeVersion),
                      recordMember("topics", "topics", &Record::topics, Keeps::All));
};

inline auto allMembers(const DialogInfoPrivate& record)
{
  const auto& [topicName, typeVersion, topics] = record;
  return std::tie(topicName, typeVersion, topics);
}

static_assert(describesAllMembers<DialogInfoPrivate>);

} // namespace vesk

#endif
