// SPDX-License-Identifier: Apache-2.0
#ifndef EDIT_CHANGES_HPP
#define EDIT_CHANGES_HPP

#include <edit/export.hpp>
#include <edit/manifest.hpp>
#include <source/lines.hpp>

#include <optional>
#include <stdexcept>
#include <string>

namespace vesk::edit
{

/// Why a manifest cannot be changed so without more being changed: a sentence for people.
class VESKPACKAGE_EDIT_EXPORT Refusal : public std::runtime_error
{
public:
  explicit Refusal(const std::string& why, std::optional<source::Place> where = std::nullopt)
      : std::runtime_error(why), place(where)
  {}

  /// Where the text stands that is in the way, if it is some text.
  std::optional<source::Place> place;
};

/// What becomes of a comment that stands for an entry: among the entries of a list or map, readers
/// take a comment for an empty one.
enum class CommentEntries
{
  Refuse, ///< to remove the entry is refused
  Stay    ///< the entry stays
};

/// Changes a manifest by as few edits of its text as possible: what is not changed keeps every byte,
/// with comments, unknown elements, layout, encoding and line ends. \p before is what readManifest()
/// makes of \p bytes. Elements that are added stand where a package would write them, and look like
/// their surroundings; those that are removed take their line with them.
///
/// Gives the bytes that readManifest() makes \p after of: it has been called to prove it. Throws
/// Refusal where that cannot be done, as for a text that is no strict XML, for fields that are no part
/// of a manifest or come out of an entity, and for values that no manifest holds.
VESKPACKAGE_EDIT_EXPORT std::string changed(const std::string& bytes, const Manifest& before,
                                            const Manifest& after,
                                            CommentEntries comments = CommentEntries::Refuse);

} // namespace vesk::edit

#endif
