// SPDX-License-Identifier: Apache-2.0
#include "verbs/verbs.hpp"

#include <nlohmann/json.hpp>

#include <iostream>

namespace tool
{

using vesk::edit::ListedField;

std::vector<std::string> wordsFor(const ListedField& field)
{
  if (field.place.empty())
  {
    return {field.type + "; no manifest holds it"};
  }
  return {field.type + " in " + field.place, field.meaning + " Absent: " + field.absent + '.'};
}

ExitCode listFields(Format format)
{
  const char* separator = "[";
  for (const ListedField& field : vesk::edit::listedFields())
  {
    if (format == Format::Json)
    {
      const nlohmann::ordered_json json{{"field", field.path},
                                        {"type", field.type},
                                        {"place", field.place},
                                        {"meaning", field.meaning},
                                        {"absent", field.absent}};
      std::cout << separator << json.dump();
      separator = ",\n ";
      continue;
    }
    std::cout << field.path << '\n';
    for (const std::string& line : wordsFor(field))
    {
      std::cout << "    " << line << '\n';
    }
  }
  std::cout << (format == Format::Json ? "]\n" : "");
  return Done;
}

} // namespace tool
