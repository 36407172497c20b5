// SPDX-License-Identifier: Apache-2.0
#include <edit/commonsubsequence.hpp>
#include <edit/difference.hpp>
#include <edit/fieldstep.hpp>
#include <edit/json.hpp>
#include <edit/membername.hpp>
#include <vesk/anyvalue.hpp>

#include <algorithm>

namespace vesk::edit
{
namespace
{
struct Element
{
  std::size_t index;
  AnyConstReference value;
};
using Elements = std::vector<Element>;

/// How the elements of two lists are paired. Each way is applied to the elements that the one
/// before it has left over between its pairs.
enum class PairedBy
{
  Content,
  Identity,
  Turn
};

Elements elementsOf(const AnyConstReference& list)
{
  Elements elements;
  for (const AnyConstReference& value : list.elements())
  {
    elements.push_back({elements.size(), value});
  }
  return elements;
}

Elements between(const Elements& elements, std::size_t begin, std::size_t end)
{
  return {elements.begin() + static_cast<std::ptrdiff_t>(begin),
          elements.begin() + static_cast<std::ptrdiff_t>(end)};
}

std::vector<std::string> keysOf(const Elements& elements, PairedBy way)
{
  std::vector<std::string> keys;
  for (const Element& element : elements)
  {
    const bool isStruct = element.value.type()->kind() == TypeKind::Struct;
    keys.push_back(toJson(
        way == PairedBy::Identity && isStruct ? element.value.member(0) : element.value, -1));
  }
  return keys;
}

bool areEqual(const AnyConstReference& before, const AnyConstReference& after)
{
  return before.is<std::string>() ? before.as<std::string>() == after.as<std::string>()
                                  : toJson(before, -1) == toJson(after, -1);
}

class Comparison
{
public:
  std::vector<Difference> found;

  void compare(const AnyConstReference& before, const AnyConstReference& after)
  {
    if (!before.isValid() && !after.isValid())
    {
      return;
    }
    if (!before.isValid() || !after.isValid() || !isSameType(*before.type(), *after.type()))
    {
      add(before, after);
      return;
    }
    switch (before.type()->kind())
    {
    case TypeKind::List:
      compareElements(elementsOf(before), elementsOf(after), PairedBy::Content);
      break;
    case TypeKind::Map:
      compareEntries(before, after);
      break;
    case TypeKind::Struct:
      compareMembers(before, after);
      break;
    case TypeKind::Dynamic:
      compare(before.as<AnyValue>(), after.as<AnyValue>());
      break;
    default:
      if (!areEqual(before, after))
      {
        add(before, after);
      }
    }
  }

private:
  void add(const AnyConstReference& before, const AnyConstReference& after)
  {
    found.push_back({{before.isValid() ? pathBefore : FieldPath(), before},
                     {after.isValid() ? pathAfter : FieldPath(), after}});
  }

  void compareParts(const FieldStep& stepBefore, const AnyConstReference& before,
                    const FieldStep& stepAfter, const AnyConstReference& after)
  {
    pathBefore.push_back(stepBefore);
    pathAfter.push_back(stepAfter);
    compare(before, after);
    pathBefore.pop_back();
    pathAfter.pop_back();
  }

  void compareParts(const FieldStep& step, const AnyConstReference& before,
                    const AnyConstReference& after)
  {
    compareParts(step, before, step, after);
  }

  void compareMembers(const AnyConstReference& before, const AnyConstReference& after)
  {
    const std::vector<std::string>& names = before.memberNames();
    for (std::size_t i = 0; i < names.size(); ++i)
    {
      compareParts(friendlyName(*before.type(), names[i]), before.member(i), after.member(i));
    }
  }

  void compareEntries(const AnyConstReference& before, const AnyConstReference& after)
  {
    for (const auto& [key, value] : before.entries())
    {
      compareParts(keyName(key), value, after.find(key));
    }
    for (const auto& [key, value] : after.entries())
    {
      if (!before.find(key).isValid())
      {
        compareParts(keyName(key), {}, value);
      }
    }
  }

  void compareElements(const Elements& before, const Elements& after, PairedBy way)
  {
    if (way == PairedBy::Turn || before.empty() || after.empty())
    {
      compareInTurn(before, after);
      return;
    }
    const auto nextWay = way == PairedBy::Content ? PairedBy::Identity : PairedBy::Turn;
    std::size_t beginBefore = 0;
    std::size_t beginAfter = 0;
    const auto compareUpTo = [&](std::size_t endBefore, std::size_t endAfter)
    {
      compareElements(between(before, beginBefore, endBefore), between(after, beginAfter, endAfter),
                      nextWay);
      beginBefore = endBefore + 1;
      beginAfter = endAfter + 1;
    };
    for (const auto& [i, j] : commonSubsequence(keysOf(before, way), keysOf(after, way)))
    {
      compareUpTo(i, j);
      compareParts(before[i].index, before[i].value, after[j].index, after[j].value);
    }
    compareUpTo(before.size(), after.size());
  }

  void compareInTurn(const Elements& before, const Elements& after)
  {
    for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i)
    {
      const Element none{};
      const Element& left = i < before.size() ? before[i] : none;
      const Element& right = i < after.size() ? after[i] : none;
      compareParts(left.index, left.value, right.index, right.value);
    }
  }

  FieldPath pathBefore;
  FieldPath pathAfter;
};
} // namespace

std::vector<Difference> differences(const AnyConstReference& before, const AnyConstReference& after)
{
  Comparison comparison;
  comparison.compare(before, after);
  return std::move(comparison.found);
}

} // namespace vesk::edit
