// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_PROTOCOL_MESSAGEREADER_HPP
#define TOOLS_VESKPACKAGE_LSP_PROTOCOL_MESSAGEREADER_HPP

#include <cstddef>
#include <istream>
#include <optional>
#include <string>

namespace tool::lsp
{

/// Longer messages are skipped.
inline constexpr std::size_t mostOfMessage = std::size_t{64} << 20U;

/// Takes messages from a stream, each of which stands behind a header with its length. What is no
/// header is skipped, up to the next one that is, and takes up no memory.
class MessageReader
{
public:
  /// \p stream must outlive it.
  explicit MessageReader(std::istream& stream) : in(stream) {}

  enum class Result
  {
    Message,
    Junk,    ///< something that was skipped; a run of it is told once
    TooLong, ///< a message that was skipped
    End
  };
  /// Waits for the next message. \p message is that, if there is one.
  Result next(std::string& message);

private:
  /// A line of the header without its end; its beginning, where it is longer than any that counts.
  std::optional<std::string> line();
  /// The length of the message that a header has; none where it has none. False at the end of the stream.
  bool readHeader(std::optional<std::size_t>& length);

  std::istream& in;
  bool isInJunk = false;
};

/// A message with its header.
std::string framed(const std::string& message);

} // namespace tool::lsp

#endif
