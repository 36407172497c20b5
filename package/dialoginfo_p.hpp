// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_DIALOGINFO_P_HPP
#define PACKAGE_DIALOGINFO_P_HPP

#include <map>
#include <string>

namespace vesk
{

/// What a DialogInfo holds.
struct DialogInfoPrivate
{
  std::string topicName;
  std::string typeVersion = "1.0";
  std::map<std::string, std::string> topics; ///< language to path of the topic file
};

} // namespace vesk

#endif
