// SPDX-License-Identifier: Apache-2.0
// Elements that the format has once.
#include <check/checker.hpp>

namespace vesk::check
{

void Checker::checkRepeated(const Node& child, const CheckedElement& known, Siblings& siblings)
{
  if (siblings.checkedParent.format.holds == format::Holds::Names)
  {
    if (!insert(lists[&siblings.checkedParent], known.name) &&
        countOne(RuleId::RepeatedPermission, nameOf(child)))
    {
      add(RuleId::RepeatedPermission, nameOf(child),
          QStringLiteral("the permission %1 is there already; remove this one")
              .arg(quoted(known.name)),
          mending.remove(child));
    }
    return;
  }
  if (known.format.isRepeatable || siblings.total.value(known.name) == 1)
  {
    return;
  }
  if (siblings.before.value(known.name) > 1)
  {
    reportRepeated(child, known, siblings);
  }
  siblings.last.insert_or_assign(&known, child);
}

void Checker::reportRepeated(const Node& child, const CheckedElement& known,
                             const Siblings& siblings)
{
  const bool isPresence = known.format.holds == format::Holds::Presence;
  const QString name = quoted(known.name);
  switch (known.format.several)
  {
  case format::Several::LastCounts:
    report(RuleId::RepeatedElement, nameOf(child),
           QStringLiteral("a further %1 replaces the one before; keep one of them").arg(name));
    break;
  case format::Several::CountForOneReader:
    if (countOne(RuleId::RepeatedSection, nameOf(child)))
    {
      add(RuleId::RepeatedSection, nameOf(child),
          QStringLiteral("one reader adds a further %1 to the one before, the other reads only "
                         "the last; merge them")
              .arg(name),
          mergeIntoLast(child, known, siblings));
    }
    break;
  case format::Several::Count:
  case format::Several::CountOnce:
  case format::Several::LastOfKeyCounts:
    if (countOne(RuleId::NeedlessRepeat, nameOf(child)))
    {
      add(RuleId::NeedlessRepeat, nameOf(child),
          isPresence ? QStringLiteral("%1 is there already; remove this one").arg(name)
                     : QStringLiteral("the readers add a further %1 to the one before; merge them")
                           .arg(name),
          isPresence ? mending.remove(child) : mergeIntoLast(child, known, siblings));
    }
    break;
  }
}

void Checker::noteNewKey(std::size_t finding, const CheckedElement& entry, const QString& key)
{
  if (entry.format.several == format::Several::LastOfKeyCounts)
  {
    newKeys.push_back({finding, &entry, key});
  }
}

void Checker::dropMendsToSameKeys()
{
  for (const NewKey& newKey : newKeys)
  {
    if (!insert(lists[newKey.entry], newKey.key))
    {
      found.dropMend(newKey.finding);
    }
  }
  newKeys.clear();
}

std::optional<Mend> Checker::mergeIntoLast(const Node& child, const CheckedElement& known,
                                           const Siblings& siblings) const
{
  // In a list, a comment is an entry.
  const bool canHaveComments = known.format.holds != format::Holds::Entries;
  const auto last = siblings.last.find(&known);
  return last != siblings.last.end() && mending.holdsElementsOnly(last->second, canHaveComments) &&
                 mending.holdsElementsOnly(child, canHaveComments)
             ? mending.merge(last->second, child)
             : std::nullopt;
}

} // namespace vesk::check
