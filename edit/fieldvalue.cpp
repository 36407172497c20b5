// SPDX-License-Identifier: Apache-2.0
#include <edit/failing.hpp>
#include <edit/fieldstep.hpp>
#include <edit/fieldvalue.hpp>
#include <edit/valuefromtext.hpp>

#include <algorithm>
#include <utility>

namespace vesk::edit
{
namespace
{
std::string kindName(const AnyConstReference& value)
{
  if (!value.isValid())
  {
    return "empty";
  }
  switch (value.type()->kind())
  {
  case TypeKind::Bool:
    return "a bool";
  case TypeKind::Integer:
  case TypeKind::Float:
    return "a number";
  case TypeKind::String:
    return "a text";
  case TypeKind::List:
    return "a list";
  case TypeKind::Map:
    return "a map";
  case TypeKind::Struct:
    return "a struct";
  case TypeKind::Dynamic:
  case TypeKind::Unknown:
    break;
  }
  return "a " + value.type()->name();
}

/// What an AnyValue holds, nothing when it is empty; any other value itself.
template <typename View>
View lookThrough(View value)
{
  while (value.template is<AnyValue>())
  {
    value = value.template as<AnyValue>().reference();
  }
  return value;
}

/// The part to which the step at a depth leads; nothing when it is an element or an entry that is
/// not there.
template <typename View>
View partOf(const View& whole, const FieldPath& path, std::size_t depth)
{
  if (std::holds_alternative<EveryElement>(path[depth]))
  {
    failAt(path, placeAt(path, depth + 1) + " stands for any number, but only one is taken here");
  }
  const View value = lookThrough(whole);
  const auto* name = std::get_if<std::string>(&path[depth]);
  const auto* index = std::get_if<std::size_t>(&path[depth]);
  const TypeKind kind = value.isValid() ? value.type()->kind() : TypeKind::Unknown;
  if (kind == TypeKind::Struct && name != nullptr)
  {
    return value.member(memberIndex(describedAs<StructTypeInterface>(value), path, depth));
  }
  if (kind == TypeKind::Map && name != nullptr)
  {
    const auto& type = describedAs<MapTypeInterface>(value);
    return value.find(valueFromText(*type.keyType(), *name, path));
  }
  if (kind == TypeKind::List && index != nullptr)
  {
    return *index < value.size() ? value.element(*index) : View();
  }
  const std::string place = placeAt(path, depth);
  failAt(path, place + " is " + kindName(value) + " and has no " +
                   (name != nullptr ? "members" : "elements") +
                   (kind == TypeKind::List ? ", but elements, as in " + place + "[0]" : ""));
}

[[noreturn]] void failMissing(const AnyConstReference& whole, const FieldPath& path,
                              std::size_t depth)
{
  const AnyConstReference value = lookThrough(whole);
  if (std::holds_alternative<std::size_t>(path[depth]))
  {
    const std::size_t size = value.size();
    failAt(path, "there is no " + placeAt(path, depth + 1) + ": the list has " +
                     std::to_string(size) + (size == 1 ? " element" : " elements"));
  }
  std::vector<std::string> keys;
  for (const auto& entry : value.entries())
  {
    keys.push_back(keyName(entry.first));
  }
  const auto& name = std::get<std::string>(path[depth]);
  failAt(path, placeAt(path, depth) + " has no entry \"" + name + "\"; " +
                   (keys.empty() ? "it is empty" : "it has " + choiceInsteadOf(name, keys)));
}

/// The part to which the step at a depth leads, which has to be there.
AnyConstReference partThereOf(const AnyConstReference& whole, const FieldPath& path,
                              std::size_t depth)
{
  const AnyConstReference part = partOf(whole, path, depth);
  if (!part.isValid())
  {
    failMissing(whole, path, depth);
  }
  return part;
}

[[noreturn]] void failWithoutElements(const AnyConstReference& value, const FieldPath& path,
                                      std::size_t depth)
{
  failAt(path, placeAt(path, depth) + " is " + kindName(value) + " and has no elements");
}

/// All elements or entries of what the steps before a depth lead to, and the step to each.
std::vector<std::pair<FieldStep, AnyConstReference>>
everyPartOf(const AnyConstReference& whole, const FieldPath& path, std::size_t depth)
{
  const AnyConstReference value = lookThrough(whole);
  const TypeKind kind = value.isValid() ? value.type()->kind() : TypeKind::Unknown;
  std::vector<std::pair<FieldStep, AnyConstReference>> parts;
  if (kind == TypeKind::List)
  {
    for (const AnyConstReference& element : value.elements())
    {
      parts.emplace_back(parts.size(), element);
    }
  }
  else if (kind == TypeKind::Map)
  {
    for (const auto& entry : value.entries())
    {
      parts.emplace_back(keyName(entry.first), entry.second);
    }
  }
  else
  {
    failWithoutElements(value, path, depth);
  }
  return parts;
}

/// As visitAt(), from what the steps before a depth lead to.
void visitFrom(AnyConstReference value, FieldPath path, std::size_t depth,
               const FieldVisitor& visit, const std::function<void(const FieldError&)>& miss)
{
  std::vector<std::pair<FieldStep, AnyConstReference>> parts;
  try
  {
    for (; depth < path.size() && !std::holds_alternative<EveryElement>(path[depth]); ++depth)
    {
      value = partThereOf(value, path, depth);
    }
    if (depth < path.size())
    {
      parts = everyPartOf(value, path, depth);
    }
  }
  catch (const FieldError& error)
  {
    miss(error);
    return;
  }
  if (depth == path.size())
  {
    visit(path, value);
  }
  for (const auto& [step, part] : parts)
  {
    path[depth] = step;
    visitFrom(part, path, depth + 1, visit, miss);
  }
}

void setPart(const AnyReference& whole, const FieldPath& path, std::size_t depth,
             const std::string& text);

/// Adds the part to which the step at a depth leads. It is built completely before it is added, so
/// that an error in it changes nothing.
void addPart(const AnyReference& whole, const FieldPath& path, std::size_t depth,
             const std::string& text)
{
  if (const auto* index = std::get_if<std::size_t>(&path[depth]))
  {
    if (*index != whole.size())
    {
      failMissing(whole, path, depth);
    }
    AnyValue element(*describedAs<ListTypeInterface>(whole).elementType());
    setPart(element, path, depth + 1, text);
    whole.append(element);
  }
  else
  {
    const auto& type = describedAs<MapTypeInterface>(whole);
    AnyValue item(*type.valueType());
    setPart(item, path, depth + 1, text);
    whole.insert(valueFromText(*type.keyType(), std::get<std::string>(path[depth]), path), item);
  }
}

void setPart(const AnyReference& whole, const FieldPath& path, std::size_t depth,
             const std::string& text)
{
  const AnyReference held = lookThrough(whole);
  if (depth == path.size())
  {
    if (!held.isValid())
    {
      failAt(path, "is empty and takes no value");
    }
    held.set(valueFromText(*held.type(), text, path));
    return;
  }
  const AnyReference part = partOf(held, path, depth);
  if (part.isValid())
  {
    setPart(part, path, depth + 1, text);
  }
  else
  {
    addPart(held, path, depth, text);
  }
}

/// Empties the list or map, whose elements the last step stands for.
void removeEvery(const AnyReference& whole, const FieldPath& path)
{
  const TypeKind kind = whole.isValid() ? whole.type()->kind() : TypeKind::Unknown;
  if (kind != TypeKind::List && kind != TypeKind::Map)
  {
    failWithoutElements(whole, path, path.size() - 1);
  }
  whole.clear();
}
} // namespace

AnyConstReference valueAt(const AnyConstReference& root, const FieldPath& path)
{
  AnyConstReference value = root;
  for (std::size_t depth = 0; depth < path.size(); ++depth)
  {
    value = partThereOf(value, path, depth);
  }
  return value;
}

void visitAt(const AnyConstReference& root, const FieldPath& path, const FieldVisitor& visit,
             const std::function<void(const FieldError&)>& miss)
{
  visitFrom(root, path, 0, visit, miss);
}

std::vector<FieldPath> expanded(const AnyConstReference& root, const FieldPath& path)
{
  const auto last = std::find(path.rbegin(), path.rend(), FieldStep(EveryElement())).base();
  std::vector<FieldPath> paths;
  const auto take = [&](FieldPath one, const AnyConstReference&)
  {
    one.insert(one.end(), last, path.end());
    paths.push_back(std::move(one));
  };
  const auto fail = [](const FieldError& error) { throw error; };
  visitAt(root, FieldPath(path.begin(), last), take, fail);
  return paths;
}

void setAt(const AnyReference& root, const FieldPath& path, const std::string& text)
{
  setPart(root, path, 0, text);
}

bool unsetAt(const AnyReference& root, const FieldPath& path)
{
  const bool isEvery = !path.empty() && std::holds_alternative<EveryElement>(path.back());
  const std::size_t end = path.size() - (isEvery ? 1 : 0);
  AnyReference whole = root;
  AnyReference part = root;
  for (std::size_t depth = 0; depth < end; ++depth)
  {
    whole = lookThrough(part);
    part = partOf(whole, path, depth);
    if (!part.isValid())
    {
      return false;
    }
  }
  if (isEvery)
  {
    removeEvery(lookThrough(part), path);
  }
  else if (part.is<AnyValue>())
  {
    part.as<AnyValue>().reset();
  }
  else if (path.empty() || whole.type()->kind() == TypeKind::Struct)
  {
    part.set(AnyValue(*part.type()));
  }
  else if (const auto* index = std::get_if<std::size_t>(&path.back()))
  {
    whole.erase(*index);
  }
  else
  {
    const auto& type = describedAs<MapTypeInterface>(whole);
    whole.erase(valueFromText(*type.keyType(), std::get<std::string>(path.back()), path));
  }
  return true;
}

} // namespace vesk::edit
