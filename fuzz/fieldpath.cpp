// SPDX-License-Identifier: Apache-2.0
// The tool's field paths. Each line is a path, an assignment, or neither.
#include "support.hpp"

#include <edit/fieldvalue.hpp>
#include <edit/json.hpp>
#include <vesk/runtimetypes.hpp>

#include <algorithm>
#include <optional>
#include <sstream>

using namespace vesk::edit;
using vesk::AnyReference;
using vesk::AnyValue;

namespace
{
/// A value of kinds that packages lack.
AnyValue someMeasures()
{
  auto* const type = vesk::describeStruct(
      "Measures", {{"count", vesk::typeOf<std::int8_t>()},
                   {"weight", vesk::typeOf<float>()},
                   {"numbers", vesk::typeOf<std::vector<std::uint64_t>>()},
                   {"texts", vesk::typeOf<std::map<int, std::string>>()},
                   {"flags", vesk::typeOf<std::map<bool, std::map<std::string, bool>>>()},
                   {"held", vesk::typeOf<AnyValue>()}});
  AnyValue value(*type);
  value.member("held").as<AnyValue>() = std::map<std::string, AnyValue>{
      {"package", AnyValue(examplePackage())}, {"none", AnyValue()}};
  return value;
}

/// What \p parse returns for a line; none when it refuses the line.
template <typename Parse>
auto parsed(const std::string& line, const Parse& parse) -> std::optional<decltype(parse(line))>
{
  try
  {
    return parse(line);
  }
  catch (const FieldError&)
  {
    return std::nullopt;
  }
}

void requireSamePath(const FieldPath& path)
{
  const std::string text = toText(path);
  require(parsed(text, parseFieldPath) == path, "not the same path: " + text);
}

void get(const AnyReference& root, const FieldPath& path)
{
  try
  {
    visitAt(
        root, path,
        [&](const FieldPath& one, const vesk::AnyConstReference& value)
        {
          requireSamePath(one);
          requireEqual(value, valueAt(root, one), "not what its path leads to");
        },
        [](const FieldError&) {});
    for (const FieldPath& one : expanded(root, path))
    {
      requireSamePath(one);
    }
    toJson(valueAt(root, path), -1);
  }
  catch (const FieldError&) // it leads nowhere
  {}
}

/// A package, or what holds one, with values of kinds that packages lack.
class Roots
{
public:
  /// The root that has the first member of the path.
  AnyReference rootOf(const FieldPath& path)
  {
    const auto& names = measures.reference().memberNames();
    const auto* first = std::get_if<std::string>(path.data());
    const bool isMeasure =
        first != nullptr && std::find(names.begin(), names.end(), *first) != names.end();
    return isMeasure ? measures.reference() : AnyReference(package);
  }

private:
  vesk::PackageInfo package{examplePackage()};
  AnyValue measures = someMeasures();
};

/// Sets a part, and requires that it is what it was set to, or that nothing has changed.
void requireSet(const AnyReference& root, const FieldPath& path, const std::string& text)
{
  const AnyValue before(root);
  try
  {
    setAt(root, path, text);
  }
  catch (const FieldError&)
  {
    requireEqual(before, root, "changed in spite of an error");
    return;
  }
  const vesk::AnyConstReference value = valueAt(root, path);
  if (value.is<std::string>())
  {
    require(value.as<std::string>() == text, "not the text that was set");
  }
  else if (root.is<vesk::PackageInfo>()) // maps with other keys than texts are not written as read
  {
    const AnyValue copy(value);
    setAt(root, path, toJson(value, -1));
    requireEqual(copy, valueAt(root, path), "not what it says itself");
  }
}

void tryLine(const std::string& line, Roots& roots)
{
  if (const auto path = parsed(line, parseFieldPath))
  {
    requireSamePath(*path);
    get(roots.rootOf(*path), *path);
  }
  if (const auto assignment = parsed(line, parseAssignment))
  {
    requireSamePath(assignment->first);
    requireSet(roots.rootOf(assignment->first), assignment->first, assignment->second);
  }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  Roots roots;
  std::istringstream lines(textOf(data, size));
  for (std::string line; std::getline(lines, line);)
  {
    tryLine(line, roots);
  }
  return 0;
}
