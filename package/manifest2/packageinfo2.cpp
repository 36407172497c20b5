// SPDX-License-Identifier: Apache-2.0
#include <package/manifest2/packageinfo2.hpp>
#include <package/manifest2/sectionaccess.hpp>
#include <package/xml/names.hpp>

#include <stdexcept>

namespace vesk
{
namespace
{
/// A copy of one value of the contents; empty where it is absent.
template <typename Content>
Content contentOf(const PackageInfo2& info, const std::string& key)
{
  return *ValueAt<Content>(*ValueAt<Values>(info.sections, manifestNames().contents), key);
}

template <typename Value>
Value& stored(AnyValue& value)
{
  if (!value.is<Value>())
  {
    throw std::runtime_error("Type mismatch");
  }
  return value.as<Value>();
}

/// The stored value; if there is none, stores an empty one first.
template <typename Value>
Value& seeded(Values& values, const std::string& key)
{
  return stored<Value>(values.try_emplace(key, Value()).first->second);
}
} // namespace

Values PackageInfo2::contents() const
{
  return *ValueAt<Values>(sections, manifestNames().contents);
}

std::vector<BehaviorInfo> PackageInfo2::behaviors() const
{
  return contentOf<std::vector<BehaviorInfo>>(*this, keys::behaviors);
}

std::vector<DialogInfo> PackageInfo2::dialogs() const
{
  return contentOf<std::vector<DialogInfo>>(*this, keys::dialogs);
}

std::vector<LanguageInfo> PackageInfo2::languages() const
{
  return contentOf<std::vector<LanguageInfo>>(*this, keys::languages);
}

WebInfo PackageInfo2::web() const { return contentOf<WebInfo>(*this, keys::web); }

Values& PackageInfo2::contents() { return seeded<Values>(sections, manifestNames().contents); }

std::vector<BehaviorInfo>& PackageInfo2::behaviors()
{
  return seeded<std::vector<BehaviorInfo>>(contents(), keys::behaviors);
}

std::vector<DialogInfo>& PackageInfo2::dialogs()
{
  return seeded<std::vector<DialogInfo>>(contents(), keys::dialogs);
}

std::vector<LanguageInfo>& PackageInfo2::languages()
{
  return seeded<std::vector<LanguageInfo>>(contents(), keys::languages);
}

WebInfo& PackageInfo2::web() { return stored<WebInfo>(contents()[keys::web]); }

} // namespace vesk
