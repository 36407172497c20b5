// SPDX-License-Identifier: Apache-2.0
#include "commonoptions.hpp"

#include <algorithm>

namespace tool
{
namespace
{
const std::map<std::string, Format> formats{
    {"text", Format::Text}, {"json", Format::Json}, {"variant", Format::Variant}};
} // namespace

std::string faultIn(const std::string& name) { return name.empty() ? "the name is empty" : ""; }

void addInputs(CLI::App& verb, Inputs& inputs, const std::string& what, const std::string& name)
{
  // Whatever it is given, it expects more. Else the parser would take [a,b] for a list, and ask others
  // for what stands behind --.
  constexpr int most = CLI::detail::expected_max_vector_size;
  verb.add_option(name, inputs.files,
                  what + "; folders are searched for them (files called manifest.xml, and others "
                         "in .xml whose root is package)")
      ->check(faultIn)
      ->option_text("...")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->expected(most, most)
      ->allow_extra_args(false);
  verb.add_option("--files-from", inputs.filesFrom,
                  "Read further files from LIST, a path a line; - is standard input")
      ->option_text("LIST");
  verb.add_flag("-0,--null", inputs.hasNulls,
                "A NUL ends each path in LIST, as find -print0 writes it")
      ->needs("--files-from");
  verb.add_option("-j,--jobs", inputs.jobs, "Work on so many files at once")
      ->check(CLI::Range(1, 1024))
      ->option_text("NUMBER");
}

void addFormat(CLI::App& verb, Format& format, bool hasVariant, const std::string& meaning)
{
  std::vector<std::string> names{"text", "json"};
  if (hasVariant)
  {
    names.emplace_back("variant");
  }
  verb.add_option_function<std::string>(
          "--format", [&format](const std::string& name) { format = formats.at(name); }, meaning)
      ->check(CLI::IsMember(names))
      ->option_text("FORMAT");
}

void require(bool condition, const std::string& what)
{
  if (!condition)
  {
    throw CLI::ValidationError(what, CLI::ExitCodes::ValidationError);
  }
}

void requireOneStandardInput(const std::vector<std::string>& files)
{
  require(std::count(files.begin(), files.end(), "-") <= 1, "standard input can be read once only");
}

void requireFiles(const Inputs& inputs)
{
  require(!inputs.files.empty() || !inputs.filesFrom.empty(), "FILE or --files-from is required");
  std::vector<std::string> all = inputs.files;
  all.push_back(inputs.filesFrom);
  requireOneStandardInput(all);
}

void addExample(CLI::App& verb, const std::string& example)
{
  verb.footer("Example:\n  " + example);
}

} // namespace tool
