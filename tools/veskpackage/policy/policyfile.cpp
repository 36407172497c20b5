// SPDX-License-Identifier: Apache-2.0
#include "policy/policyfile.hpp"

#include "files/manifestfile.hpp"
#include "output/jsonline.hpp"
#include "policy/filefault.hpp"
#include "policy/severities.hpp"

#include <format/nearest.hpp>

#include <algorithm>
#include <functional>

// The library of this in the system is built with exceptions and its own limits.
// Its own assertions do not hold for every text that is no TOML; it gives errors for them all the same.
#define TOML_ASSERT(condition) static_cast<void>(0)
#define TOML_HEADER_ONLY 1
#define TOML_EXCEPTIONS 0
#define TOML_MAX_NESTED_VALUES 8
#include <toml++/toml.h>

namespace tool
{

using vesk::source::Place;

namespace
{
constexpr int mostPolicyMebibytes = 1;
/// Each is matched with each path.
constexpr std::size_t mostPatterns = 1000;
/// A dotted key is as many tables within each other, which are destroyed by recursion.
constexpr std::ptrdiff_t mostDotsInLine = 500;

void requireShallow(const std::string& text, const std::string& file)
{
  int line = 1;
  for (auto begin = text.begin(); begin != text.end(); ++line)
  {
    const auto end = std::find(begin, text.end(), '\n');
    if (std::count(begin, end, '.') > mostDotsInLine)
    {
      throw FileFault(file, {line, 1}, "more than 500 dots in a line");
    }
    begin = end == text.end() ? end : end + 1;
  }
}

Place placeOf(const toml::source_region& region)
{
  return {static_cast<int>(region.begin.line), static_cast<int>(region.begin.column)};
}

class PolicyReader
{
public:
  explicit PolicyReader(std::string nameOfFile) : file(std::move(nameOfFile)) {}

  Policy read(const toml::table& content)
  {
    forEachKey(content, {{"check", [this](const toml::node& value) { readCheck(value); }}});
    return std::move(policy);
  }

private:
  using Readers = std::map<std::string, std::function<void(const toml::node&)>>;

  void readCheck(const toml::node& value)
  {
    forEachKey(asTable("check", value),
               {{"exclude", [this](const toml::node& node) { readExclude(node); }},
                {"severities", [this](const toml::node& node) { readSeverities(node); }},
                {"strict", [this](const toml::node& node) { readStrict(node); }}});
  }

  void readStrict(const toml::node& value)
  {
    require(value.is_boolean(), value, "\"strict\" is no true or false");
    policy.isStrict = value.as_boolean()->get();
  }

  void readExclude(const toml::node& value)
  {
    require(value.is_array(), value, "\"exclude\" is no list of texts");
    require(value.as_array()->size() <= mostPatterns, value, "more than 1000 patterns");
    for (const toml::node& entry : *value.as_array())
    {
      require(entry.is_string(), entry, "\"exclude\" is no list of texts");
      const std::string& pattern = entry.as_string()->get();
      const auto names = namesIn(pattern);
      require(!names.empty(), entry, "a pattern without a name");
      require(std::find(names.begin(), names.end(), "..") == names.end(), entry,
              "a pattern that leaves the folder of " + std::string(policyFileName));
      policy.excluded.emplace_back(pattern);
    }
  }

  void readSeverities(const toml::node& value)
  {
    for (auto&& [key, severity] : asTable("severities", value))
    {
      const std::string tag(key.str());
      try
      {
        // An unknown rule is told before a severity that is no text.
        const auto* const name = severity.as_string();
        policy.severities[tag] = severityFor(tag, name == nullptr ? std::string() : name->get());
      }
      catch (const std::invalid_argument& fault)
      {
        const bool isTag = vesk::check::findRule(tag) == nullptr;
        throw FileFault(file, placeOf(isTag ? key.source() : severity.source()), fault.what());
      }
    }
  }

  const toml::table& asTable(const std::string& name, const toml::node& value) const
  {
    require(value.is_table(), value, '"' + name + "\" is no table");
    return *value.as_table();
  }

  void forEachKey(const toml::table& table, const Readers& readers) const
  {
    for (auto&& [key, value] : table)
    {
      const std::string name(key.str());
      const auto reader = readers.find(name);
      if (reader == readers.end())
      {
        throw FileFault(file, placeOf(key.source()), unknown(name, readers));
      }
      reader->second(value);
    }
  }

  static std::string unknown(const std::string& name, const Readers& readers)
  {
    std::vector<std::string> names;
    for (const auto& [known, reader] : readers)
    {
      names.push_back(known);
    }
    const std::vector<std::string> meant = vesk::format::nearest(name, names);
    return "there is no key " + jsonLine(name) +
           (meant.empty() ? "" : "; did you mean \"" + meant.front() + "\"?");
  }

  void require(bool condition, const toml::node& value, const std::string& fault) const
  {
    if (!condition)
    {
      throw FileFault(file, placeOf(value.source()), fault);
    }
  }

  const std::string file;
  Policy policy;
};
} // namespace

Policy readPolicy(const std::string& file)
{
  std::string trouble;
  const std::optional<std::string> text = readBytes(file, trouble, mostPolicyMebibytes);
  if (!text)
  {
    throw FileFault(file, trouble);
  }
  return parsePolicy(*text, file);
}

Policy parsePolicy(const std::string& text, const std::string& file)
{
  requireShallow(text, file);
  const toml::parse_result parsed = toml::parse(text);
  if (!parsed)
  {
    std::string fault(parsed.error().description());
    // Which it may quote from the file, and which a terminal obeys.
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; };
    std::replace_if(fault.begin(), fault.end(), isControl, ' ');
    throw FileFault(file, placeOf(parsed.error().source()), fault);
  }
  return PolicyReader(file).read(parsed.table());
}

} // namespace tool
