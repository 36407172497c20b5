// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_DOCUMENT_HPP
#define SOURCE_DOCUMENT_HPP

#include <source/encoding.hpp>
#include <source/export.hpp>
#include <source/tree.hpp>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vesk::source
{

/// How the lines of a text end.
enum class LineEnd
{
  Lf,   ///< "\n", also for a text of one line
  CrLf, ///< "\r\n"
  Cr    ///< "\r"
};

/// The characters that end a line.
inline std::string_view charactersOf(LineEnd lineEnd)
{
  return lineEnd == LineEnd::Lf ? "\n" : lineEnd == LineEnd::CrLf ? "\r\n" : "\r";
}

/// Whether a tree has the texts of nothing but blanks, which are most of its nodes where a text is laid
/// out. Those in CDATA sections are there in any case.
enum class BlankTexts
{
  Kept,
  LeftOut
};

/// Why a text is not well-formed, and where.
struct Error
{
  std::string message;
  Range range; ///< what the message is about; of size 0 at the end of the text
};

/// An XML text with the tree of its nodes, each of which knows where it stands.
///
/// The parser is strict: it takes what XML 1.0 takes, and nothing that merely can be understood. It
/// does not validate, reads nothing but the text it is given, and does not expand entities that the
/// document type declares, but those in attributes' values. Nesting, attributes and entities are
/// limited (limits.hpp), and so is the text, to 2 GiB: time, stack and memory stay in proportion to
/// it, whatever it contains.
///
/// A document never changes, and any number of threads may read it. It is moved without moving its
/// nodes.
class VESKPACKAGE_SOURCE_EXPORT Document
{
public:
  /// Parses the bytes of a file. Never fails: when the text is not well-formed, error() says why, and
  /// the tree holds what stands before that place, with the elements that are open there.
  static Document parse(std::string bytes);
  /// The same, for who does not need all nodes: they take up less memory, and leave gaps.
  static Document parse(std::string bytes, BlankTexts blankTexts);
  /// The same of a text that is in UTF-8 whatever encoding it declares, as programs hold it that have
  /// decoded a file.
  static Document parseText(std::string text, BlankTexts blankTexts = BlankTexts::Kept);

  Document(Document&& other) noexcept;
  Document& operator=(Document&& other) noexcept;
  ~Document();

  /// Why the text is not well-formed; none when it is.
  const std::optional<Error>& error() const;

  /// The root element; null when the text ends before it.
  const Node* root() const;
  /// All that stands outside of elements, the root element among them; blanks are left out.
  Node::ChildRange nodes() const;

  /// The text in UTF-8, with its byte order mark where it has one. All ranges are places in it.
  std::string_view text() const;
  /// A part of the text.
  std::string_view text(const Range& range) const
  {
    return text().substr(range.begin, range.size());
  }

  /// The bytes that were parsed; the same as text() when that is how they are encoded.
  std::string_view bytes() const;
  /// How the bytes stand for the text.
  const Encoding& encoding() const;
  /// Of the first line.
  LineEnd lineEnd() const;

private:
  struct Contents;
  explicit Document(std::unique_ptr<Contents> parsed);
  static Document withTree(std::unique_ptr<Contents> parsed, BlankTexts blankTexts);

  std::unique_ptr<Contents> contents;
};

} // namespace vesk::source

#endif
