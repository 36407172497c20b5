// SPDX-License-Identifier: Apache-2.0
#include "commandline.hpp"
#include "output/complaint.hpp"
#include "usagefault.hpp"

#include <edit/fieldpath.hpp>

#include <cstdio>
#include <exception>
#include <iostream>

namespace tool
{
namespace
{
int run(int argc, char** argv)
{
  CommandLine commandLine;
  try
  {
    commandLine.app.parse(argc, argv);
  }
  catch (const CLI::ParseError& error)
  {
    return commandLine.app.exit(error) == 0 ? Done : WrongUsage;
  }
  catch (const vesk::edit::FieldError& error) // in a field's path, before any file is read
  {
    std::cerr << "veskpackage: error: " << error.what() << '\n';
    return WrongUsage;
  }
  catch (const UsageFault& fault)
  {
    std::cerr << fault.what() << '\n';
    return WrongUsage;
  }
  if (!std::cout.flush())
  {
    complain(std::cerr, "<stdout>", "Could not write");
    return FileTrouble;
  }
  return commandLine.code;
}
} // namespace
} // namespace tool

int main(int argc, char** argv)
{
  try
  {
    return tool::run(argc, argv);
  }
  catch (const std::exception& error) // a list of files that cannot be read, or memory ran out
  {
    static_cast<void>(std::fprintf(stderr, "veskpackage: error: %s\n", error.what()));
    return tool::FileTrouble;
  }
}
