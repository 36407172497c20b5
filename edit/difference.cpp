// SPDX-License-Identifier: Apache-2.0
#include <edit/difference.hpp>
#include <edit/fieldstep.hpp>
#include <edit/json.hpp>
#include <edit/membername.hpp>
#include <edit/pairing.hpp>
#include <vesk/anyvalue.hpp>

namespace vesk::edit
{
namespace
{
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
      compareElements(before, after);
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

  void compareElements(const AnyConstReference& before, const AnyConstReference& after)
  {
    const std::vector<AnyConstReference> left = before.elements();
    const std::vector<AnyConstReference> right = after.elements();
    for (const auto& [i, j] : pairsOf(left, right))
    {
      compareParts(i.value_or(0), i ? left[*i] : AnyConstReference(), j.value_or(0),
                   j ? right[*j] : AnyConstReference());
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
