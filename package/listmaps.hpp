// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_LISTMAPS_HPP
#define PACKAGE_LISTMAPS_HPP

#include <list>
#include <map>
#include <string>

namespace vesk
{

using ListMap = std::map<std::string, std::list<std::string>>;

/// Appends, creating the list of \p key when there is none.
void appendStringInMapOfListOfString(ListMap& map, const std::string& key,
                                     const std::string& value);

/// Inserts before the element at \p index; appends where there is none at that index.
void insertStringInMapOfListOfString(ListMap& map, const std::string& key, const std::string& value,
                                     int index);

/// Replaces the first element equal to \p oldValue; false when there is none.
bool updateStringInMapOfListOfString(ListMap& map, const std::string& key,
                                     const std::string& oldValue, const std::string& newValue);

/// Erases the first element equal to \p value; false when there is none. The key stays.
bool removeStringInMapOfListOfString(ListMap& map, const std::string& key,
                                     const std::string& value);

} // namespace vesk

#endif
