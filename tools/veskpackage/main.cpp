// SPDX-License-Identifier: Apache-2.0
#include "verbs.hpp"

#include <vesk/log.hpp>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <map>

namespace
{
int run(int argc, char** argv)
{
  // The verbs print what concerns the user themselves.
  vesk::log::removeHandler(vesk::log::defaultHandler);

  ExitCode code = Done;
  CLI::App app("Shows and formats the manifests of robot application packages.", "veskpackage");
  app.set_version_flag("--version", std::string("veskpackage ") + VESKPACKAGE_VERSION);
  app.require_subcommand(1);
  app.footer("FILE is a manifest; - stands for standard input or output.\n"
             "Exit codes: 0 done, 1 a negative result, 2 wrong usage, 3 a file unreadable or "
             "malformed, or one that cannot be written.");

  std::vector<std::string> files;
  CLI::App* showVerb =
      app.add_subcommand("show", "Print what manifests hold, as a report or otherwise");
  showVerb->add_option("FILE", files, "Manifests to print")->required();
  static const std::map<std::string, ShowFormat> formats{
      {"text", ShowFormat::Text}, {"json", ShowFormat::Json}, {"variant", ShowFormat::Variant}};
  std::string format = "text";
  showVerb
      ->add_option("--format", format,
                   "text (the report, the default), json (all fields; of several manifests one "
                   "line each), or variant (as the robot's modules get it; [] without a uuid)")
      ->check(CLI::IsMember(formats))
      ->option_text("FORMAT");
  showVerb->callback([&] { code = show(files, formats.at(format)); });

  std::string file;
  std::string output = "-";
  CLI::App* fmtVerb = app.add_subcommand(
      "fmt", "Load a manifest and write it back, without comments and what it does not know");
  fmtVerb->add_option("FILE", file, "Manifest to read")->required();
  fmtVerb->add_option("-o,--output", output, "File to write; standard output when not given");
  fmtVerb->callback([&] { code = fmt(file, output); });

  try
  {
    app.parse(argc, argv);
  }
  catch (const CLI::ParseError& error)
  {
    return app.exit(error) == 0 ? Done : WrongUsage;
  }
  return code;
}
} // namespace

int main(int argc, char** argv)
{
  try
  {
    return run(argc, argv);
  }
  catch (const std::exception& error) // memory ran out, nearly surely
  {
    static_cast<void>(std::fprintf(stderr, "veskpackage: error: %s\n", error.what()));
    return FileTrouble;
  }
}
