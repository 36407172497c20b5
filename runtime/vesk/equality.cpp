// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyvalue.hpp>

#include <algorithm>

namespace vesk
{
namespace
{
bool areEqual(const AnyConstReference& left, const AnyConstReference& right, int depth);

bool areEqualNumbers(const AnyConstReference& left, const AnyConstReference& right)
{
  const auto& type = static_cast<const NumberTypeInterface&>(*left.type());
  return type.number(left.address()) == type.number(right.address());
}

bool areEqualLists(const AnyConstReference& left, const AnyConstReference& right, int depth)
{
  const std::vector<AnyConstReference> ours = left.elements();
  const std::vector<AnyConstReference> theirs = right.elements();
  return std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                    [depth](const AnyConstReference& our, const AnyConstReference& their)
                    { return areEqual(our, their, depth); });
}

bool areEqualMaps(const AnyConstReference& left, const AnyConstReference& right, int depth)
{
  const auto ours = left.entries();
  const auto theirs = right.entries();
  return std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                    [depth](const auto& our, const auto& their) {
                      return areEqual(our.first, their.first, depth) &&
                             areEqual(our.second, their.second, depth);
                    });
}

bool areEqualStructs(const AnyConstReference& left, const AnyConstReference& right, int depth)
{
  for (std::size_t index = 0; index < left.memberNames().size(); ++index)
  {
    if (!areEqual(left.member(index), right.member(index), depth))
    {
      return false;
    }
  }
  return true;
}

bool areEqual(const AnyConstReference& left, const AnyConstReference& right, int depth)
{
  if (!left.isValid() || !right.isValid())
  {
    return left.isValid() == right.isValid();
  }
  if (!isSameType(*left.type(), *right.type()))
  {
    return false;
  }
  if (depth > detail::deepestNesting)
  {
    throw ConversionError("cannot compare values nested more than " +
                          std::to_string(detail::deepestNesting) + " deep");
  }
  switch (left.type()->kind())
  {
  case TypeKind::Bool:
    return left.as<bool>() == right.as<bool>();
  case TypeKind::Integer:
  case TypeKind::Float:
    return areEqualNumbers(left, right);
  case TypeKind::String:
    return left.as<std::string>() == right.as<std::string>();
  case TypeKind::List:
    return areEqualLists(left, right, depth + 1);
  case TypeKind::Map:
    return areEqualMaps(left, right, depth + 1);
  case TypeKind::Struct:
    return areEqualStructs(left, right, depth + 1);
  case TypeKind::Dynamic:
    return areEqual(left.as<AnyValue>(), right.as<AnyValue>(), depth + 1);
  case TypeKind::Unknown:
    break;
  }
  return left.address() == right.address();
}
} // namespace

bool operator==(const AnyConstReference& left, const AnyConstReference& right)
{
  return areEqual(left, right, 0);
}

} // namespace vesk
