// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_LAYOUT_HPP
#define SOURCE_LAYOUT_HPP

#include <source/edits.hpp>

#include <optional>

/// How the surroundings of an edit look.
namespace vesk::source
{

/// Whether there is nothing but blanks and tabs.
bool areBlanksInLine(std::string_view text);

/// With "\n" at the ends of all lines.
std::string withLineFeeds(std::string_view text);

/// The blanks before a node in its line, if nothing else stands before it there.
/// \{
std::optional<std::string> indentationOf(const Document& document, const Node& node);
std::optional<std::string> indentationAt(const Document& document, std::uint32_t begin);
/// \}

/// Whether layout leaves alone what stands in an element, since blanks may have a meaning there, or all
/// is on one line and has no tags.
bool staysInside(const Document& document, const Node& element);

/// By how much most nodes of the document are indented within their parents, as far as they stand first
/// in their lines; two blanks when none is.
std::string stepOfIndentation(const Document& document);

/// The part of the text that goes with nodes or a tag: their lines, when they stand there alone, with
/// an empty one behind them if there is one before them, too; else that itself.
Range rangeToRemove(const Document& document, const Range& range);

/// Nodes in a line, with the blanks on one side of them where there are some on both.
Range withBlanks(const Document& document, const Range& range);

/// The place behind the comments that follow \p place in its line; \p next is the node that begins there,
/// if any.
std::uint32_t endWithComments(std::uint32_t place, const Node* next, std::string_view text);

/// An element as XML, its children each in a line with \p indentation and more before it, or all in
/// one line when there is none.
std::string asXml(const NewElement& element, const std::optional<std::string>& indentation,
                  const std::string& step, LineEnd lineEnd);

/// A text as it is put into an element: in a CDATA section if it is to be in one and can, or if it is
/// of blanks only. What is read as \p lineEnd becomes "\n", which stands for the document's line end in
/// edits. Throws std::invalid_argument for characters that XML has not.
std::string textAsXml(std::string_view text, bool isCData, LineEnd lineEnd);

/// The value of an attribute as it stands in XML. Throws as textAsXml() does.
std::string escapedValue(std::string_view value, char quote);

} // namespace vesk::source

#endif
