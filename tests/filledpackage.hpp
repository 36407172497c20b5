// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_FILLEDPACKAGE_HPP
#define TESTS_FILLEDPACKAGE_HPP

#include <package/packageinfo.hpp>
#include <vesk/anyvalue.hpp>

#include <sstream>
#include <string>

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
inline std::string contentOf(const vesk::AnyConstReference& value)
{
  using vesk::TypeKind;
  std::string content;
  switch (value.type()->kind())
  {
  case TypeKind::Bool:
    return value.as<bool>() ? "true" : "false";
  case TypeKind::String:
    return '"' + value.as<std::string>() + '"';
  case TypeKind::List:
    for (const vesk::AnyConstReference& element : value.elements())
    {
      content += contentOf(element) + ",\n";
    }
    break;
  case TypeKind::Map:
    for (const auto& [key, item] : value.entries())
    {
      content += contentOf(key) + ": " + contentOf(item) + ",\n";
    }
    break;
  case TypeKind::Struct:
    for (const std::string& name : value.memberNames())
    {
      content += name + ": " + contentOf(value.member(name)) + ",\n";
    }
    break;
  case TypeKind::Dynamic:
    return contentOf(value.as<vesk::AnyValue>().reference());
  default:
    throw std::logic_error("cannot look into a " + value.type()->name());
  }
  return '{' + content + '}';
}

/// The same of a C++ value.
template <typename Record>
std::string contentOfRecord(const Record& record)
{
  return contentOf(vesk::AnyConstReference(record));
}

#endif
