// SPDX-License-Identifier: Apache-2.0
#include <edit/entries.hpp>
#include <edit/failing.hpp>
#include <edit/fieldstep.hpp>
#include <edit/fieldvalue.hpp>
#include <edit/unheld.hpp>

#include <algorithm>
#include <set>

namespace vesk::edit
{

using format::Element;

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
      const std::string record = !whole.is<Manifest>() ? type.name()
                                 : name == "web"       ? "::vesk::PackageInfo2"
                                                       : typeOf<PackageInfo>()->name();
      member = {way, value, format::placeOf(record, name)};
    }
  }
  return member;
}

std::string inQuotes(const std::string& text) { return '"' + text + '"'; }

/// What is wrong with the entries of a list that counts equal ones once; empty when nothing is.
std::string faultIn(const AnyConstReference& list, const Element& element)
{
  std::vector<std::string> names;
  for (const Element& known : element.children)
  {
    names.push_back(known.name);
  }
  std::set<std::string> seen;
  for (const AnyConstReference& entry : list.elements())
  {
    const auto& text = entry.as<std::string>();
    if (element.holds == format::Holds::Names &&
        std::find(names.begin(), names.end(), text) == names.end())
    {
      return inQuotes(text) + " is unknown; there are " + choiceInsteadOf(text, names);
    }
    if (!seen.insert(text).second)
    {
      return inQuotes(text) + " stands twice";
    }
  }
  return {};
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
  const AnyConstReference& value = difference.before.value;
  if (attribute == nullptr && isContainer(*element) &&
      entryFormat(*element).several == format::Several::CountOnce)
  {
    const std::string fault = faultIn(member.value, *element);
    if (!fault.empty())
    {
      return toText(member.path) + ": " + fault;
    }
  }
  if (value.isValid() && value.type()->kind() == TypeKind::List && value.size() == 0)
  {
    return toText(path) + ": a manifest has no empty list here, only none";
  }
  return toText(path) + ": a manifest cannot hold this value";
}

} // namespace vesk::edit
