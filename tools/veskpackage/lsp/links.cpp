// SPDX-License-Identifier: Apache-2.0
#include "lsp/links.hpp"

#include "lsp/elements.hpp"
#include "lsp/packagefolder.hpp"
#include "lsp/protocol/fileuri.hpp"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tool::lsp
{

namespace format = vesk::format;
namespace source = vesk::source;

namespace
{
constexpr int mostPaths = 1000; // each asks the file system

/// The part of a value that is a path; of size 0 when there is none, or it has references.
source::Range pathIn(const source::Attribute& attribute, const format::Attribute& known,
                     const source::Document& document)
{
  source::Range range = attribute.valueRange();
  const std::string_view value = document.text(range);
  const bool isPath = known.type == format::Type::Path || known.type == format::Type::PathStem;
  const bool isCommand = known.name == "execStart";
  if ((!isPath && !isCommand) || value.find('&') != std::string_view::npos)
  {
    return {};
  }
  if (isCommand)
  {
    const std::size_t first = std::min(value.find_first_not_of(" \t\r\n"), value.size());
    const std::string_view command = value.substr(first);
    const bool isQuoted = !command.empty() && (command[0] == '"' || command[0] == '\'');
    const std::size_t begin = isQuoted ? 1 : 0;
    const std::string_view ends = isQuoted ? command.substr(0, 1) : " \t\r\n";
    const std::size_t end = std::min(command.find_first_of(ends, begin), command.size());
    range.begin += static_cast<std::uint32_t>(first + begin);
    range.end = range.begin + static_cast<std::uint32_t>(end - begin);
  }
  return range;
}
} // namespace

Json linksOf(const Manuscript& manuscript)
{
  Json links = Json::array();
  const source::Document& document = manuscript.document();
  if (document.root() == nullptr || manuscript.folder().empty())
  {
    return links;
  }
  int paths = 0;
  const auto addLinks = [&](const source::Node& element, const format::Element& known)
  {
    for (const source::Attribute& attribute : element.attributes())
    {
      const format::Attribute* const attributeFormat = formatOf(known, attribute);
      if (attributeFormat == nullptr)
      {
        continue;
      }
      const source::Range range = pathIn(attribute, *attributeFormat, document);
      if (range.size() == 0 || ++paths > mostPaths)
      {
        continue;
      }
      const bool canLackExtension = attributeFormat->type == format::Type::PathStem;
      const std::string file = fileIn(manuscript.folder(), document.text(range), canLackExtension);
      std::error_code error;
      if (!file.empty() && std::filesystem::is_regular_file(file, error))
      {
        links.push_back({{"range", manuscript.rangeOf(range)}, {"target", fileUriOf(file)}});
      }
    }
  };
  visitElements(*document.root(), addLinks);
  return links;
}

} // namespace tool::lsp
