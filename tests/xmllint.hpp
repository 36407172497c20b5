// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_XMLLINT_HPP
#define TESTS_XMLLINT_HPP

#include "support.hpp"

#include <array>
#include <map>
#include <set>

struct Schema
{
  QString option; ///< of xmllint
  QString path;
};

inline const std::array schemas{Schema{"--relaxng", PROJECT_FOLDER "schema/manifest.rng"},
                                Schema{"--schema", PROJECT_FOLDER "schema/manifest.xsd"}};

/// Those of the files that the schema refuses, with what xmllint says of them.
inline std::map<std::string, std::string> refusedBy(const Schema& schema,
                                                    const std::set<std::string>& paths)
{
  QStringList arguments{"--noout", "--nonet", schema.option, schema.path};
  std::map<std::string, std::string> refused;
  for (const std::string& path : paths)
  {
    arguments += QString::fromStdString(path);
    refused[path];
  }
  std::istringstream lines(runProgram("xmllint", arguments).err);
  for (std::string line; std::getline(lines, line);)
  {
    const std::string path =
        line.substr(0, line.find(line.find(':') == std::string::npos ? ' ' : ':'));
    if (line == path + " validates")
    {
      refused.erase(path);
    }
    else if (refused.count(path) != 0)
    {
      refused[path] += line + '\n';
    }
  }
  return refused;
}

#endif
