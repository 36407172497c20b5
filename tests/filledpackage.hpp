// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_FILLEDPACKAGE_HPP
#define TESTS_FILLEDPACKAGE_HPP

#include <edit/json.hpp>
#include <package/packageinfo.hpp>
#include <vesk/anyvalue.hpp>

#include <string>
#include <vector>

/// Fills a value by its description, members, elements and all, with what \p values gives for the
/// struct's member that \p member names: flag(), text(member), length(member) of a list, and keys()
/// of a map.
template <typename Values>
void fill(const vesk::AnyReference& value, Values& values, const std::string& member = {})
{
  using vesk::TypeKind;
  switch (value.type()->kind())
  {
  case TypeKind::Bool:
    value.set(values.flag());
    break;
  case TypeKind::String:
    value.set(values.text(member));
    break;
  case TypeKind::List:
    for (int left = values.length(member); left > 0; --left)
    {
      fill(value.append(), values, member);
    }
    break;
  case TypeKind::Map: {
    const auto* type = static_cast<const vesk::MapTypeInterface*>(value.type());
    for (const std::string& key : values.keys())
    {
      fill(value.insert(key, vesk::AnyValue(*type->valueType())), values, member);
    }
    break;
  }
  case TypeKind::Struct:
    for (const std::string& name : value.memberNames())
    {
      fill(value.member(name), values, name);
    }
    break;
  default:
    throw std::logic_error("cannot fill a " + value.type()->name());
  }
}

/// Texts of which no two are equal, and nothing as it is by default.
class DistinctValues
{
public:
  explicit DistinctValues(int before = 0) : count(before) {}
  int texts() const { return count; }
  static bool flag() { return true; }
  std::string text(const std::string&) { return "text " + std::to_string(++count); }
  static int length(const std::string&) { return 3; }
  static std::vector<std::string> keys() { return {"en_US", "de", "fr"}; }

private:
  int count;
};

/// The same, but only what a manifest and a variant keep: permissions are no free texts, and there are
/// no categories.
struct KeptValues : DistinctValues
{
  std::string text(const std::string& member)
  {
    const std::list<std::string>& permissions = vesk::BehaviorInfo::supportedPermissions();
    return member == "permissions"  ? *std::next(permissions.begin(), ++given % 4)
           : member == "categories" ? ""
                                    : DistinctValues::text(member);
  }
  int given = 0;
};

template <typename Record, typename Values = DistinctValues>
Record filled(Values values = Values())
{
  Record record;
  fill(vesk::AnyReference(record), values);
  return record;
}

/// All that a value holds, by its description, for comparing.
template <typename Value>
std::string contentIn(const Value& value)
{
  return vesk::edit::toJson(vesk::AnyConstReference(value), 2);
}

#endif
