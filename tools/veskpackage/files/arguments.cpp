// SPDX-License-Identifier: Apache-2.0
#include "files/arguments.hpp"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tool
{
namespace
{
bool startsWith(const std::string& text, const std::string& start)
{
  return text.compare(0, start.size(), start) == 0;
}

bool mayBeFile(const std::string& argument)
{
  std::error_code unknown;
  return argument == "-" || argument.find('/') != std::string::npos ||
         std::filesystem::path(argument).extension() == ".xml" ||
         std::filesystem::exists(argument, unknown);
}

bool isAssignment(const std::string& argument)
{
  return argument.find('=') != std::string::npos && !startsWith(argument, "/") &&
         !startsWith(argument, "./") && !startsWith(argument, "../");
}

Arguments dividedAt(std::vector<std::string>::const_iterator border,
                    const std::vector<std::string>& arguments)
{
  return {{arguments.begin(), border}, {border, arguments.end()}};
}
} // namespace

Arguments filesAndFields(const std::vector<std::string>& arguments)
{
  return dividedAt(std::find_if_not(arguments.begin(), arguments.end(), mayBeFile), arguments);
}

Arguments filesAndAssignments(const std::vector<std::string>& arguments)
{
  return dividedAt(std::find_if(arguments.begin(), arguments.end(), isAssignment), arguments);
}

} // namespace tool
