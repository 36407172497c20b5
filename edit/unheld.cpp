// SPDX-License-Identifier: Apache-2.0
#include <edit/entries.hpp>
#include <edit/fieldstep.hpp>
#include <edit/fieldvalue.hpp>
#include <edit/json.hpp>
#include <edit/membername.hpp>
#include <edit/memberplace.hpp>
#include <edit/unheld.hpp>

#include <set>

namespace vesk::edit
{

namespace
{
/// The innermost member of a record on a path.
struct HeldMember
{
  FieldPath path;
  AnyConstReference value; ///< nothing where the path leads to nothing
  format::Place place;
};

HeldMember innermostMember(const Manifest& manifest, const FieldPath& path)
{
  HeldMember member;
  FieldPath way;
  AnyConstReference value(manifest);
  for (std::size_t depth = 0; depth < path.size() && value.isValid(); ++depth)
  {
    value = value.is<AnyValue>() ? AnyConstReference(value.as<AnyValue>()) : value;
    const AnyConstReference whole = value;
    way.push_back(path[depth]);
    try
    {
      value = valueAt(whole, {path[depth]});
    }
    catch (const FieldError&) // what was read has it, what was wanted has not
    {
      value = {};
    }
    if (whole.isValid() && whole.type()->kind() == TypeKind::Struct && value.isValid())
    {
      const auto& type = *static_cast<const StructTypeInterface*>(whole.type());
      const std::string name = type.memberNames()[memberIndex(type, path, depth)];
      member = {way, value, placeOfMember(type, name)};
    }
  }
  return member;
}

/// A text that is in a list more than once; null when there is none.
const std::string* repeatedIn(const AnyConstReference& list)
{
  std::set<std::string> seen;
  for (const AnyConstReference& entry : list.elements())
  {
    if (!seen.insert(entry.as<std::string>()).second)
    {
      return &entry.as<std::string>();
    }
  }
  return nullptr;
}
/// Extends a path to the text within a value; false when it is not there.
bool extend(FieldPath& path, const AnyConstReference& value, const std::string& text)
{
  if (!value.isValid())
  {
    return false;
  }
  std::vector<std::pair<FieldStep, AnyConstReference>> parts;
  switch (value.type()->kind())
  {
  case TypeKind::String:
    return value.as<std::string>() == text;
  case TypeKind::Struct:
    for (const std::string& name : value.memberNames())
    {
      parts.emplace_back(friendlyName(*value.type(), name), value.member(name));
    }
    break;
  case TypeKind::List:
    for (const AnyConstReference& element : value.elements())
    {
      parts.emplace_back(parts.size(), element);
    }
    break;
  case TypeKind::Map:
    for (const auto& [key, entry] : value.entries())
    {
      parts.emplace_back(key.as<std::string>(), entry);
    }
    break;
  case TypeKind::Dynamic:
    return extend(path, value.as<AnyValue>(), text);
  default:
    return false;
  }
  for (const auto& [step, part] : parts)
  {
    path.push_back(step);
    if (step == FieldStep(text) || extend(path, part, text))
    {
      return true;
    }
    path.pop_back();
  }
  return false;
}
} // namespace

std::string whyUnheld(const Manifest& wanted, const Difference& difference)
{
  const FieldPath& path =
      difference.before.value.isValid() ? difference.before.path : difference.after.path;
  const HeldMember member = innermostMember(wanted, path);
  const auto [element, attribute] = member.place;
  if (element == nullptr)
  {
    return toText(member.path) + " is not part of a manifest";
  }
  const bool countsOnce = attribute == nullptr && isContainer(*element) &&
                          entryFormat(*element).several == format::Several::CountOnce;
  if (const std::string* const repeated = countsOnce ? repeatedIn(member.value) : nullptr)
  {
    return toText(member.path) + ": \"" + *repeated + "\" stands twice";
  }
  return toText(path) + ": a manifest cannot hold this value; " +
         (difference.after.value.isValid()
              ? "it would be read as " + toJson(difference.after.value, -1, friendlyName)
              : "it would be left out");
}

FieldPath pathTo(const std::string& text, const Manifest& before, const Manifest& after)
{
  for (const Difference& difference :
       differences(AnyConstReference(before), AnyConstReference(after)))
  {
    FieldPath path = difference.after.path;
    const bool isKey = !path.empty() && path.back() == FieldStep(text);
    if (isKey || extend(path, difference.after.value, text))
    {
      return path;
    }
  }
  return {};
}

} // namespace vesk::edit
