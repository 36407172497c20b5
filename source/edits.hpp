// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_EDITS_HPP
#define SOURCE_EDITS_HPP

#include <source/document.hpp>
#include <source/export.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vesk::source
{

/// A part of a document's text, and what shall stand there instead: XML in UTF-8 with "\n" at the ends
/// of its lines. An empty range is a place between two characters, where something is put in.
struct Edit
{
  Range range;
  std::string text;
};
inline bool operator==(const Edit& left, const Edit& right)
{
  return left.range == right.range && left.text == right.text;
}

/// The bytes of the document's file after all edits, which are made at once: their ranges are places
/// in the document as it is. What is put in at one place stands in the order of the edits. It gets
/// the document's line ends and its encoding; characters that the encoding lacks become references.
/// All other bytes stay as they are.
///
/// Throws std::invalid_argument when ranges overlap or reach beyond the text, and std::runtime_error
/// when the document's encoding does not give back the bytes that were read, as when a file in
/// ISO-2022-JP has needless escape sequences.
VESKPACKAGE_SOURCE_EXPORT std::string apply(const Document& document, std::vector<Edit> edits);

/// Throws std::invalid_argument, which says why, for a text that XML cannot hold.
VESKPACKAGE_SOURCE_EXPORT void requireXmlCharacters(std::string_view text);

/// An element that is to be put into a document.
struct NewElement
{
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes; ///< names and values
  std::string text;                                            ///< in front of the children
  std::vector<NewElement> children;
  bool isCData = false; ///< whether the text stands in a CDATA section, where it can
  /// Instead of all this, an element of the document as it stands there; null for a new one.
  const Node* moved = nullptr;
};

/// How those who read a document take the ends of lines in its texts.
enum class LineReading
{
  Normalized, ///< each as "\n", as XML demands
  Raw         ///< as they stand, "\r\n" as two characters
};

/// Collects edits of a document by what they shall do to its nodes. The document must outlive it. The
/// edits look like their surroundings: quotes, indentation, one element a line or all on one line.
///
/// Values and texts are given as they are meant, and are escaped here; a text of blanks only is put
/// into a CDATA section, since readers drop it elsewhere. One with a character that XML cannot hold,
/// such as U+0001, throws std::invalid_argument. Each node is to be edited once: the
/// edits of two calls that change the same place overlap, which apply() refuses.
class VESKPACKAGE_SOURCE_EXPORT Editor
{
public:
  explicit Editor(const Document& edited, LineReading lineReading = LineReading::Normalized)
      : document(edited), reading(lineReading)
  {}

  /// Gives an attribute of an element this value. A new one goes behind \p after, or behind the last
  /// one if that is null.
  void setAttribute(const Node& element, std::string_view name, std::string_view value,
                    const Attribute* after = nullptr);
  /// Removes an attribute with the blanks before it.
  void removeAttribute(const Attribute& attribute);

  /// Replaces the texts and CDATA sections within an element, but none in elements within it; comments
  /// and all else stay, also texts of blanks that are no part of the value. A text in a CDATA section
  /// stays in one where it can.
  void setText(const Node& element, std::string_view text);

  /// Puts elements into another one: behind its child \p after, or behind its start tag if that is
  /// null, and behind the comments that follow in that line.
  void insert(const Node& parent, const Node* after, const std::vector<NewElement>& elements);
  /// Removes a node, or all from one to another one of its siblings, with what is between them; and
  /// their lines, when they stand there alone.
  /// \{
  void remove(const Node& node) { remove(node, node); }
  void remove(const Node& first, const Node& last);
  /// \}
  /// Removes the tags of an element, each with its line, when it stands there alone. What is between
  /// them stays.
  void unwrap(const Node& element);

  const std::vector<Edit>& edits() const { return collected; }
  /// See source::apply().
  std::string apply() const { return source::apply(document, collected); }

private:
  /// How line ends in texts are written so that they are read as they are.
  LineEnd lineEnd() const;

  const Document& document;
  LineReading reading;
  std::vector<Edit> collected;
  std::string step; // of indentation; empty until it is needed
};

} // namespace vesk::source

#endif
