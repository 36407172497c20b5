// SPDX-License-Identifier: Apache-2.0
#include "complaint.hpp"
#include "json.hpp"
#include "manifestfile.hpp"
#include "verbs.hpp"

#include <xovalue/xovalue.hpp>

#include <iostream>

namespace
{
void print(vesk::PackageInfo& package, ShowFormat format, bool onOneLine)
{
  switch (format)
  {
  case ShowFormat::Text:
    std::cout << package;
    break;
  case ShowFormat::Json:
    std::cout << toJson(vesk::AnyConstReference(package), onOneLine ? -1 : 2) << '\n';
    break;
  case ShowFormat::Variant:
    XO::XOValue value;
    package.toXOValue(value);
    std::cout << value << '\n';
    break;
  }
}
} // namespace

ExitCode show(const std::vector<std::string>& files, ShowFormat format)
{
  ExitCode code = Done;
  for (const std::string& file : files)
  {
    vesk::PackageInfo package;
    if (load(package, file))
    {
      print(package, format, files.size() > 1);
      if (!std::cout.flush())
      {
        complain("<stdout>", "Could not write");
        return FileTrouble;
      }
    }
    else
    {
      code = FileTrouble;
    }
  }
  return code;
}
