// SPDX-License-Identifier: Apache-2.0
#include "verbs/verbs.hpp"

#include <edit/difference.hpp>
#include <edit/json.hpp>

#include <iostream>

namespace tool
{

using vesk::edit::Difference;
using vesk::edit::toJson;
using vesk::edit::toText;

namespace
{
void printText(const Difference& difference)
{
  std::cout << toText(difference.path()) << ": ";
  if (!difference.after.value.isValid())
  {
    std::cout << "removed " << toJson(difference.before.value, -1) << '\n';
  }
  else if (!difference.before.value.isValid())
  {
    std::cout << "added " << toJson(difference.after.value, -1) << '\n';
  }
  else
  {
    std::cout << toJson(difference.before.value, -1) << " -> " << toJson(difference.after.value, -1)
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
    std::cout << separator << R"({"field":)" << toJson(vesk::AnyConstReference(field), -1)
              << R"(,"before":)" << toJson(difference.before.value, -1) << R"(,"after":)"
              << toJson(difference.after.value, -1) << '}';
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
      vesk::AnyConstReference(left->package), vesk::AnyConstReference(right->package));
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
