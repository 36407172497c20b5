// SPDX-License-Identifier: Apache-2.0
#include "usagemessage.hpp"

#include <format/nearest.hpp>

#include <vector>

namespace tool
{
namespace
{
std::string quotedChoice(const std::vector<std::string>& names)
{
  std::string text;
  for (const std::string& name : names)
  {
    text += (text.empty() ? "\"" : " or \"") + name + '"';
  }
  return text;
}

/// "--jobs" and the like of a verb, or of the program itself.
std::vector<std::string> optionsOf(const CLI::App& app)
{
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options())
  {
    for (const std::string& name : option->get_lnames())
    {
      names.push_back("--" + name);
    }
  }
  return names;
}

std::vector<std::string> verbsOf(const CLI::App& app)
{
  std::vector<std::string> names;
  for (const CLI::App* const verb : app.get_subcommands({}))
  {
    names.push_back(verb->get_name());
  }
  return names;
}
} // namespace

std::string usageMessage(const CLI::App* app, const CLI::Error& error)
{
  std::string text = error.what();
  const std::vector<std::string> unexpected = app->remaining(true);
  if (!unexpected.empty())
  {
    const auto verbs = app->get_subcommands();
    const std::string name = unexpected.front().substr(0, unexpected.front().find('='));
    const bool isOption = name.compare(0, 1, "-") == 0;
    std::vector<std::string> meant;
    if (isOption)
    {
      text = "there is no option \"" + name + '"';
      meant = vesk::format::nearest(name, optionsOf(verbs.empty() ? *app : *verbs.front()));
    }
    else if (verbs.empty())
    {
      text = "there is no verb \"" + name + '"';
      meant = vesk::format::nearest(name, verbsOf(*app));
    }
    text += meant.empty() ? "" : "; did you mean " + quotedChoice(meant) + '?';
  }
  return text + "\nRun with --help for more information.\n";
}

} // namespace tool
