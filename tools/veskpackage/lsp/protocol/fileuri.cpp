// SPDX-License-Identifier: Apache-2.0
#include "lsp/protocol/fileuri.hpp"

#include "output/filelocation.hpp"

#include <charconv>

namespace tool::lsp
{
namespace
{
/// Takes \p beginning off the front of a text, if that is there.
bool take(std::string_view beginning, std::string_view& text)
{
  const bool isThere = text.substr(0, beginning.size()) == beginning;
  text.remove_prefix(isThere ? beginning.size() : 0);
  return isThere;
}

std::optional<std::string> withoutPercentSigns(std::string_view text)
{
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at)
  {
    if (text[at] != '%')
    {
      result += text[at];
      continue;
    }
    const std::string_view digits = text.substr(at + 1, 2);
    unsigned byte = 0;
    const char* const end = digits.data() + digits.size();
    if (digits.size() < 2 || std::from_chars(digits.data(), end, byte, 16).ptr != end || byte == 0)
    {
      return std::nullopt;
    }
    result += static_cast<char>(byte);
    at += 2;
  }
  return result;
}
} // namespace

std::optional<std::string> pathOf(std::string_view uri)
{
  if (!take("file:", uri))
  {
    return std::nullopt;
  }
  if (take("//", uri))
  {
    take("localhost", uri);
  }
  uri = uri.substr(0, uri.find_first_of("?#"));
  if (uri.substr(0, 1) != "/")
  {
    return std::nullopt;
  }
  return withoutPercentSigns(uri);
}

std::string fileUriOf(const std::string& path) { return "file://" + uriOf(path); }

} // namespace tool::lsp
