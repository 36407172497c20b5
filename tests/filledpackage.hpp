// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_FILLEDPACKAGE_HPP
#define TESTS_FILLEDPACKAGE_HPP

#include <package/packageinfo.hpp>
#include <vesk/anyvalue.hpp>

#include <string>
#include <tools/veskpackage/json.hpp>

/// Fills a value by its description, members, elements and all, so that no two texts are equal and
/// nothing is left as it is by default.
inline void fill(const vesk::AnyReference& value, int& count)
{
  using vesk::TypeKind;
  switch (value.type()->kind())
  {
  case TypeKind::Bool:
    value.set(true);
    break;
  case TypeKind::String:
    value.set("text " + std::to_string(++count));
    break;
  case TypeKind::List: {
    const auto* type = static_cast<const vesk::ListTypeInterface*>(value.type());
    for (int i = 0; i < 3; ++i)
    {
      fill(vesk::AnyReference(*type->elementType(), type->append(value.address())), count);
    }
    break;
  }
  case TypeKind::Map: {
    const auto* type = static_cast<const vesk::MapTypeInterface*>(value.type());
    for (const std::string key : {"en_US", "de", "fr"})
    {
      fill(vesk::AnyReference(*type->valueType(), type->insert(value.address(), &key)), count);
    }
    break;
  }
  case TypeKind::Struct:
    for (const std::string& name : value.memberNames())
    {
      fill(value.member(name), count);
    }
    break;
  default:
    throw std::logic_error("cannot fill a " + value.type()->name());
  }
}

template <typename Record>
Record filled()
{
  Record record;
  int count = 0;
  fill(vesk::AnyReference(record), count);
  return record;
}

/// All that a value holds, by its description, for comparing.
template <typename Value>
std::string contentIn(const Value& value)
{
  return toJson(vesk::AnyConstReference(value), 2);
}

#endif
