// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_MARKUP_HPP
#define TOOLS_VESKPACKAGE_LSP_MARKUP_HPP

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

/// The pieces of a text that somebody is writing: what is not well-formed is taken as it is meant, so
/// far as that can be told. Takes time in proportion to the text, whatever it is.
namespace tool::lsp
{

/// A piece of such a text.
struct Markup
{
  enum class Kind
  {
    Text,
    StartTag,
    EmptyTag, ///< `<a/>`
    EndTag,
    Other ///< a comment, a CDATA section, an instruction, a document type
  };
  Kind kind = Kind::Text;
  std::size_t begin = 0;
  std::size_t end = 0;
  bool isFinished = true; ///< false without the characters that end it, as `<a b="c" <d/>`
};

/// The pieces from a place between two of them on.
class Markups
{
public:
  explicit Markups(std::string_view manifest, std::size_t from = 0) : text(manifest), place(from) {}

  /// None at the end of the text.
  std::optional<Markup> next();

private:
  Markup other(std::string_view closing, std::size_t from) const;
  Markup documentType() const;
  Markup tag() const;

  std::string_view text;
  std::size_t place;
};

/// An attribute as it stands in a tag. What it lacks is empty.
struct WrittenAttribute
{
  std::size_t begin = 0; ///< of its name
  std::size_t nameEnd = 0;
  bool hasValue = false; ///< at least the "="
  bool isQuoted = false; ///< at the beginning of its value
  bool isClosed = false; ///< by the same quote
  std::size_t valueBegin = 0;
  std::size_t valueEnd = 0;
};

/// Where the name in a tag begins and ends.
/// \{
std::size_t nameBegin(const Markup& tag);
std::size_t nameEnd(std::string_view text, const Markup& tag);
/// \}
std::string_view nameIn(std::string_view text, const Markup& tag);

/// The attributes of a tag, at most as many as a manifest may have.
std::vector<WrittenAttribute> attributesIn(std::string_view text, const Markup& tag);

} // namespace tool::lsp

#endif
