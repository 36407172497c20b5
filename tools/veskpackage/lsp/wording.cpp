// SPDX-License-Identifier: Apache-2.0
#include "lsp/wording.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace tool::lsp
{

namespace format = vesk::format;

namespace
{
const char* nameOf(format::Type type)
{
  switch (type)
  {
  case format::Type::Language:
    return "The code of a language.";
  case format::Type::Path:
    return "A path, relative to the package's folder.";
  case format::Type::PathStem:
    return "A path, relative to the package's folder; the file's extension may be missing.";
  case format::Type::Version:
    return "A version.";
  case format::Type::Text:
  case format::Type::Flag:
    break;
  }
  return "";
}

const char* nameOf(format::Readers readers)
{
  switch (readers)
  {
  case format::Readers::PackageInfo:
    return "Read by PackageInfo only.";
  case format::Readers::LoadManifest:
    return "Read by loadManifest only.";
  case format::Readers::Both:
    break;
  }
  return "";
}

std::string joined(const std::vector<std::string>& parts, const char* between)
{
  std::string all;
  for (const std::string& part : parts)
  {
    all += all.empty() || part.empty() ? "" : between;
    all += part;
  }
  return all;
}
} // namespace

void Wording::add(const format::Entry& entry)
{
  paragraphs.push_back(strong(entry.name));
  paragraphs.push_back(
      plain(joined({entry.meaning, nameOf(entry.type), nameOf(entry.readers),
                    entry.isRequired ? "Needed." : "", "Absent: " + entry.absent + '.'},
                   " ")));
  std::vector<std::string> values;
  for (const std::string& value : entry.usual)
  {
    values.push_back(literal(value));
  }
  if (!values.empty())
  {
    paragraphs.push_back("Values: " + joined(values, ", "));
  }
  else if (!entry.example.empty())
  {
    paragraphs.push_back("Example: " + literal(entry.example));
  }
}

void Wording::add(const vesk::check::Rule& rule)
{
  paragraphs.push_back(strong(rule.tag) + ": " + plain(rule.explanation));
}

void Wording::add(const std::string& words) { paragraphs.push_back(plain(words)); }

Json Wording::toJson() const
{
  return {{"kind", isMarkdown ? "markdown" : "plaintext"}, {"value", joined(paragraphs, "\n\n")}};
}

std::string Wording::plain(const std::string& words) const
{
  constexpr std::string_view special = R"(\`*_{}[]<>()#+!|~&$)";
  std::string escaped;
  for (const char c : words)
  {
    escaped += isMarkdown && special.find(c) != std::string_view::npos ? "\\" : "";
    escaped += c;
  }
  return escaped;
}

std::string Wording::strong(const std::string& words) const
{
  return isMarkdown ? "**" + plain(words) + "**" : words;
}

std::string Wording::literal(const std::string& text) const
{
  return isMarkdown && text.find('`') == std::string::npos ? '`' + text + '`' : plain(text);
}

} // namespace tool::lsp
