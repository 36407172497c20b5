// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_MANIFEST2_SECTIONACCESS_HPP
#define PACKAGE_MANIFEST2_SECTIONACCESS_HPP

#include <vesk/anyvalue.hpp>

#include <map>
#include <string>

/// Reaching the values in PackageInfo2::sections and in the contents there.
namespace vesk
{

/// The keys that are not only the names of the elements that are read.
namespace keys
{
constexpr const char* contents = "contents";   // in the sections
constexpr const char* behaviors = "behaviors"; // in the contents, as what follows
constexpr const char* dialogs = "dialogs";
constexpr const char* languages = "languages";
constexpr const char* web = "web";
} // namespace keys

using Values = std::map<std::string, AnyValue>;

/// The value under a key, empty when there is none: the stored one where it is a Value, so that
/// nothing is copied, and else a converted copy. Must not outlive the map.
template <typename Value>
class ValueAt
{
public:
  /// Throws ConversionError.
  ValueAt(const Values& values, const std::string& key)
  {
    const auto entry = values.find(key);
    if (entry == values.end())
    {
      return;
    }
    if (entry->second.is<Value>())
    {
      stored = &entry->second.as<Value>();
    }
    else
    {
      converted = entry->second.to<Value>();
    }
  }

  const Value& operator*() const { return stored != nullptr ? *stored : converted; }

private:
  const Value* stored = nullptr;
  Value converted;
};

} // namespace vesk

#endif
