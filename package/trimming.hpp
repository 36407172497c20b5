// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_TRIMMING_HPP
#define PACKAGE_TRIMMING_HPP

#include <package/languagecodes.hpp>
#include <package/recordmember.hpp>

#include <list>
#include <string>

namespace vesk
{

/// Trims every map of a record to the languages that its table says it keeps.
template <typename Record>
void trimMembers(Record& record, const std::list<std::string>& descriptionLanguages,
                 const std::list<std::string>& supportedLanguages)
{
  forEachMember<Record>(
      [&](const auto& member, int)
      {
        auto& value = record.*member.pointer;
        if constexpr (isMap<std::decay_t<decltype(value)>>)
        {
          if (member.keeps != Keeps::All)
          {
            trimFromLanguages(value, member.keeps == Keeps::DescriptionLanguages
                                         ? descriptionLanguages
                                         : supportedLanguages);
          }
        }
      });
}

} // namespace vesk

#endif
