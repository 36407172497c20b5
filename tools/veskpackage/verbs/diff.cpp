// SPDX-License-Identifier: Apache-2.0
#include "verbs/verbs.hpp"

#include <edit/difference.hpp>
#include <edit/json.hpp>
#include <edit/membername.hpp>

#include <iostream>

namespace tool
{

using vesk::edit::Difference;
using vesk::edit::toText;

namespace
{
std::string toJson(const vesk::AnyConstReference& value)
{
  return vesk::edit::toJson(value, -1, vesk::edit::friendlyName);
}

void printText(const Difference& difference)
{
  std::cout << toText(difference.path()) << ": ";
  if (!difference.after.value.isValid())
  {
    std::cout << "removed " << toJson(difference.before.value) << '\n';
  }
  else if (!difference.before.value.isValid())
  {
    std::cout << "added " << toJson(difference.after.value) << '\n';
  }
  else
  {
    std::cout << toJson(difference.before.value) << " -> " << toJson(difference.after.value)
              << '\n';
  }
}

/// "before" or "after" is null where that manifest has no such field.
void printJson(const std::vector<Difference>& all)
{
  std::cout << '[';
  const char* separator = "";
  for (const Difference& difference : all)
  {
    const std::string field = toText(difference.path());
    std::cout << separator << R"({"field":)" << toJson(vesk::AnyConstReference(field))
              << R"(,"before":)" << toJson(difference.before.value) << R"(,"after":)"
              << toJson(difference.after.value) << '}';
    separator = ",\n ";
  }
  std::cout << "]\n";
}
} // namespace

ExitCode diffManifests(const DiffOptions& options)
{
  const std::optional<Manifest> left = load(options.left, std::cerr);
  const std::optional<Manifest> right = load(options.right, std::cerr);
  if (!left || !right)
  {
    return FileTrouble;
  }
  const std::vector<Difference> all = vesk::edit::differences(
      vesk::AnyConstReference(left->fields), vesk::AnyConstReference(right->fields));
  if (options.format == Format::Json)
  {
    printJson(all);
  }
  else
  {
    std::for_each(all.begin(), all.end(), printText);
  }
  return all.empty() ? Done : NegativeResult;
}

} // namespace tool
