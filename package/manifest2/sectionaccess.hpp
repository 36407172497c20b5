// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_MANIFEST2_SECTIONACCESS_HPP
#define PACKAGE_MANIFEST2_SECTIONACCESS_HPP

#include <vesk/anyvalue.hpp>

#include <map>
#include <string>

/// Access to the values in PackageInfo2::sections and in the contents there.
namespace vesk
{

/// The keys in the contents. Those of the sections are the names of their elements.
namespace keys
{
constexpr const char* behaviors = "behaviors";
constexpr const char* dialogs = "dialogs";
constexpr const char* languages = "languages";
constexpr const char* web = "web";
} // namespace keys

using Values = std::map<std::string, AnyValue>;

/// The value under a key: the stored one, without copying, if it is a Value, else a converted copy;
/// an empty value when there is no such key. Valid as long as the map's entry is not changed.
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
