// SPDX-License-Identifier: Apache-2.0
#include <vesk/typeinterface.hpp>

#include <algorithm>
#include <stdexcept>

namespace vesk
{

TypeInterface::~TypeInterface() = default;

bool isSameType(const TypeInterface& left, const TypeInterface& right)
{
  return &left == &right || (left.info() == right.info() && left.info() != typeid(void));
}

void detail::requireIndex(const char* what, std::size_t index, std::size_t count)
{
  if (index >= count)
  {
    throw std::out_of_range(std::string("no ") + what + ' ' + std::to_string(index) +
                            (count == 1 ? "; there is " : "; there are ") + std::to_string(count));
  }
}

std::string ListTypeInterface::name() const { return "list<" + elementType()->name() + ">"; }

std::string MapTypeInterface::name() const
{
  return "map<" + keyType()->name() + ", " + valueType()->name() + ">";
}

std::optional<std::size_t> StructTypeInterface::memberIndex(const std::string& memberName) const
{
  const std::vector<std::string>& names = memberNames();
  const auto found = std::find(names.begin(), names.end(), memberName);
  if (found == names.end())
  {
    return std::nullopt;
  }
  return static_cast<std::size_t>(found - names.begin());
}

void StructTypeInterface::setMember(void* value, std::size_t index, const void* source) const
{
  void* const target = member(value, index);
  memberTypes().at(index)->assign(target, source);
}

bool StructTypeInterface::convertFrom(void*, const MemberDifference&) const { return false; }

bool StructTypeInterface::convertTo(const MemberDifference&) const { return false; }

} // namespace vesk
