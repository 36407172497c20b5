// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_FORMATTING_HPP
#define SOURCE_FORMATTING_HPP

#include <source/edits.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vesk::source
{

/// The edits that lay a document out: they change blanks within tags and between nodes, and the
/// quotes of attributes, and nothing else. Order, comments, texts, references, the document type, the
/// encoding and the line ends stay; none are left to make after they have been made.
///
/// - Each node stands in a line of its own, indented by one \p step more than its parent; but a
///   comment that follows something in a line stays there. Of empty lines between nodes one stays.
/// - An element stays as it is inside when it holds a text that is not blank, a CDATA section or a
///   reference to an entity, or has xml:space="preserve"; and so does one on one line that holds no
///   elements or instructions. No other keeps blanks alone.
/// - In a tag one blank stands before each attribute, or a line break and two steps more than before
///   the element, where there was a line break. Quotes are double unless the value has such.
///
/// \p step is of blanks and tabs; without it, it is that by which most nodes are indented already. The
/// document must be well-formed. Throws std::invalid_argument if either is not so.
VESKPACKAGE_SOURCE_EXPORT std::vector<Edit> formatting(const Document& document,
                                                       const std::optional<std::string>& step = {});

} // namespace vesk::source

#endif
