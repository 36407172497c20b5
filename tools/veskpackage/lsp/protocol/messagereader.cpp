// SPDX-License-Identifier: Apache-2.0
#include "lsp/protocol/messagereader.hpp"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>
#include <string_view>

namespace tool::lsp
{
namespace
{
constexpr std::size_t mostOfLine = 1024;
constexpr std::size_t pieceSize = std::size_t{1} << 16U;

/// The length in a line like "Content-Length: 12"; none in any other.
std::optional<std::size_t> lengthIn(std::string_view line)
{
  constexpr std::string_view name = "content-length:";
  const auto isAlike = [](char left, char right)
  { return left == std::tolower(static_cast<unsigned char>(right)); };
  if (line.size() < name.size() || !std::equal(name.begin(), name.end(), line.begin(), isAlike))
  {
    return std::nullopt;
  }
  line.remove_prefix(std::min(line.find_first_not_of(" \t", name.size()), line.size()));
  const std::string_view digits = line.substr(0, line.find_last_not_of(" \t") + 1);
  std::size_t length = 0;
  const char* const end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, length);
  if (result.ptr != end || digits.empty() || result.ec == std::errc::invalid_argument)
  {
    return std::nullopt;
  }
  return result.ec == std::errc() ? length : std::numeric_limits<std::size_t>::max();
}
} // namespace

MessageReader::Result MessageReader::next(std::string& message)
{
  std::optional<std::size_t> length;
  while (!length)
  {
    if (!readHeader(length))
    {
      return Result::End;
    }
    if (!length && !isInJunk)
    {
      isInJunk = true;
      return Result::Junk;
    }
  }
  isInJunk = false;
  if (*length > mostOfMessage)
  {
    constexpr auto most = std::numeric_limits<std::streamsize>::max();
    in.ignore(static_cast<std::streamsize>(std::min(*length, static_cast<std::size_t>(most))));
    return in ? Result::TooLong : Result::End;
  }
  message.clear();
  while (message.size() < *length) // so that memory is taken only for what has come
  {
    const std::size_t begin = message.size();
    message.resize(std::min(begin + pieceSize, *length));
    if (!in.read(&message[begin], static_cast<std::streamsize>(message.size() - begin)))
    {
      return Result::End;
    }
  }
  return Result::Message;
}

bool MessageReader::readHeader(std::optional<std::size_t>& length)
{
  std::optional<std::string> read = line();
  for (; read && !read->empty(); read = line())
  {
    const std::optional<std::size_t> found = lengthIn(*read);
    length = found ? found : length;
  }
  return read.has_value();
}

std::optional<std::string> MessageReader::line()
{
  std::string result;
  int c = in.get();
  for (; c != std::istream::traits_type::eof() && c != '\n'; c = in.get())
  {
    if (result.size() < mostOfLine)
    {
      result += static_cast<char>(c);
    }
  }
  if (c != '\n')
  {
    return std::nullopt;
  }
  if (!result.empty() && result.back() == '\r')
  {
    result.pop_back();
  }
  return result;
}

std::string framed(const std::string& message)
{
  return "Content-Length: " + std::to_string(message.size()) + "\r\n\r\n" + message;
}

} // namespace tool::lsp
