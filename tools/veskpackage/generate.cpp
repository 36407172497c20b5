// SPDX-License-Identifier: Apache-2.0
// Writes the man pages and the completion of the program's options into a folder:
//
//   veskpackage_generate FOLDER
#include "commandline.hpp"

#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <set>

namespace tool
{
namespace
{
std::ofstream opened(const std::string& path)
{
  std::ofstream file;
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file.open(path);
  return file;
}

/// Text as it stands in a man page.
std::string escaped(const std::string& text)
{
  std::string result;
  for (const char character : text)
  {
    if (character == '\\')
    {
      result += "\\e";
    }
    else if (character == '-')
    {
      result += "\\-";
    }
    else
    {
      result += character;
    }
    if (character == '\n')
    {
      result += "\\&"; // so that no line is taken for a request
    }
  }
  return result;
}

/// The names of an option as they are written: "-j, --jobs".
std::string namesOf(const CLI::Option& option)
{
  std::string names;
  for (const std::string& name : option.get_snames())
  {
    names += (names.empty() ? "-" : ", -") + name;
  }
  for (const std::string& name : option.get_lnames())
  {
    names += (names.empty() ? "--" : ", --") + name;
  }
  return names.empty() ? option.get_name(true) : names;
}

bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

void writeOptions(std::ostream& page, const CLI::App& app)
{
  page << ".SH OPTIONS\n";
  for (const CLI::Option* const option : app.get_options())
  {
    page << ".TP\n\\fB" << escaped(namesOf(*option)) << "\\fR";
    if (takesValue(*option) && !option->get_positional())
    {
      page << " \\fI" << escaped(option->get_option_text()) << "\\fR";
    }
    page << "\n\\&" << escaped(option->get_description()) << '\n';
  }
}

void writeTitle(std::ostream& page, const std::string& name, const CLI::App& app)
{
  page << ".TH " << name << " 1 \"\" \"veskpackage " VESKPACKAGE_VERSION "\" \"User Commands\"\n"
       << ".SH NAME\n"
       << escaped(name) << " \\- " << escaped(app.get_description()) << '\n';
}

void writeExitStatus(std::ostream& page)
{
  page << ".SH EXIT STATUS\n";
  for (std::size_t code = 0; code < exitCodeMeanings.size(); ++code)
  {
    page << ".TP\n" << code << "\n\\&" << escaped(exitCodeMeanings.at(code)) << '\n';
  }
}

/// For the verbs that take or print the paths of fields.
void writeFields(std::ostream& page, const std::string& verb)
{
  if (std::set<std::string>{"get", "set", "unset", "diff", "fields"}.count(verb) == 0)
  {
    return;
  }
  page << ".SH FIELDS\n\\&"
       << escaped(
              "A field is named by its path: members of records with dots between them, elements "
              "of lists by their index, counted from 0, and entries of maps by their key, as in "
              "behaviors[0].tags.en_US[1]. [*] stands for every element or entry, as in "
              "behaviors[*].path or names[*]. A key that is empty or holds a dot, a bracket, a "
              "quote, =, a blank or a control character is written as a JSON string, as in "
              "names.\"a.b\". What is set to the index behind the last element of a list is "
              "appended to it. Shells need quotes around paths with brackets.")
       << '\n';
  if (verb != "fields")
  {
    page << ".PP\nAll fields are in veskpackage\\-fields(1).\n";
    return;
  }
  for (const vesk::edit::ListedField& field : vesk::edit::listedFields())
  {
    page << ".TP\n\\fB" << escaped(field.path) << "\\fR\n";
    const char* lineBreak = "";
    for (const std::string& line : wordsFor(field))
    {
      page << lineBreak << "\\&" << escaped(line) << '\n';
      lineBreak = ".br\n";
    }
  }
}

void writeVerbPage(const std::string& folder, const CLI::App& verb)
{
  const std::string name = "veskpackage-" + verb.get_name();
  std::ofstream page = opened(folder + '/' + name + ".1");
  writeTitle(page, name, verb);
  page << ".SH SYNOPSIS\n\\fBveskpackage " << verb.get_name() << R"(\fR [\fIOPTION\fR]...)";
  for (const CLI::Option* const option : verb.get_options())
  {
    if (option->get_positional())
    {
      page << " \\fI" << escaped(option->get_name(true)) << "\\fR"
           << (option->get_items_expected_max() > 1 ? "..." : "");
    }
  }
  page << '\n';
  writeOptions(page, verb);
  const std::string example = verb.get_footer();
  page << ".SH EXAMPLE\n.nf\n\\&" << escaped(example.substr(example.find('\n') + 1)) << "\n.fi\n";
  writeFields(page, verb.get_name());
  writeExitStatus(page);
  page << ".SH SEE ALSO\nveskpackage(1)\n";
}

void writeMainPage(const std::string& folder, const CLI::App& app,
                   const std::vector<const CLI::App*>& verbs)
{
  std::ofstream page = opened(folder + "/veskpackage.1");
  writeTitle(page, "veskpackage", app);
  page << ".SH SYNOPSIS\n\\fBveskpackage\\fR \\fIVERB\\fR [\\fIOPTION\\fR]... [\\fIFILE\\fR]...\n"
       << ".SH VERBS\n";
  for (const CLI::App* const verb : verbs)
  {
    page << ".TP\n\\fB" << verb->get_name() << "\\fR\n\\&" << escaped(verb->get_description())
         << "; see veskpackage\\-" << verb->get_name() << "(1)\n";
  }
  writeOptions(page, app);
  const std::string footer = app.get_footer();
  page << ".SH NOTES\n\\&" << escaped(footer.substr(0, footer.find('\n'))) << '\n';
  writeExitStatus(page);
}

/// The values that an option takes, separated by blanks: the choices, which CLI11 describes as
/// "{one,two}", or the tags of rules.
std::string valuesOf(const CLI::Option& option)
{
  if (option.get_option_text().substr(0, 3) == "TAG")
  {
    std::string tags;
    for (const vesk::check::Rule& rule : vesk::check::rules())
    {
      tags += rule.tag + std::string(" ");
    }
    return tags;
  }
  const std::string type = option.get_type_name();
  const std::size_t begin = type.find('{');
  if (begin == std::string::npos)
  {
    return {};
  }
  std::string choices = type.substr(begin + 1, type.find('}') - begin - 1);
  std::replace(choices.begin(), choices.end(), ',', ' ');
  return choices;
}

std::string longNamesIn(const CLI::App& app)
{
  std::string names;
  for (const CLI::Option* const option : app.get_options())
  {
    for (const std::string& name : option->get_lnames())
    {
      names += "--" + name + ' ';
    }
  }
  return names;
}

void writeCompletion(const std::string& folder, const CLI::App& app,
                     const std::vector<const CLI::App*>& verbs)
{
  std::ofstream script = opened(folder + "/veskpackage.bash");
  std::string verbNames;
  for (const CLI::App* const verb : verbs)
  {
    verbNames += verb->get_name() + ' ';
  }
  script << "# bash completion of veskpackage\n"
            "_veskpackage()\n{\n"
            "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} words=\n"
            "  if [[ $word == = ]]; then word=\n"
            "  elif [[ $before == = ]]; then before=${COMP_WORDS[COMP_CWORD-2]}; fi\n"
            "  if ((COMP_CWORD == 1)); then\n    words='"
         << verbNames << longNamesIn(app)
         << "'\n  else\n    case \"${COMP_WORDS[1]} $before\" in\n";
  for (const CLI::App* const verb : verbs)
  {
    for (const CLI::Option* const option : verb->get_options())
    {
      const std::string values = valuesOf(*option);
      if (!values.empty())
      {
        script << "    \"" << verb->get_name() << " --" << option->get_lnames().front()
               << "\") words='" << values << "' ;;\n";
      }
    }
  }
  script << "    esac\n"
            "    if [[ -z $words && $word == -* ]]; then\n"
            "      case ${COMP_WORDS[1]} in\n";
  for (const CLI::App* const verb : verbs)
  {
    script << "      " << verb->get_name() << ") words='" << longNamesIn(*verb) << "' ;;\n";
  }
  script << "      esac\n    fi\n  fi\n"
            "  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
            "}\n"
            "complete -o default -F _veskpackage veskpackage\n";
}

void writeAll(const std::string& folder)
{
  const CommandLine commandLine;
  const std::vector<const CLI::App*> verbs = commandLine.app.get_subcommands({});
  for (const CLI::App* const verb : verbs)
  {
    writeVerbPage(folder, *verb);
  }
  writeMainPage(folder, commandLine.app, verbs);
  writeCompletion(folder, commandLine.app, verbs);
}
} // namespace
} // namespace tool

int main(int argc, char** argv)
{
  if (argc != 2)
  {
    std::cerr << "usage: veskpackage_generate FOLDER\n";
    return 2;
  }
  try
  {
    tool::writeAll(argv[1]);
    return 0;
  }
  catch (const std::exception& error)
  {
    std::cerr << "veskpackage_generate: " << error.what() << '\n';
    return 1;
  }
}
