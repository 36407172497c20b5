// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_STRICTTEXT_HPP
#define CHECK_STRICTTEXT_HPP

#include <source/document.hpp>

#include <optional>
#include <string>

namespace vesk::check
{

/// The text of a manifest that only the toolkit has parsed, so that findings have places in it.
struct StrictText
{
  source::Document document;
  /// Why it is no strict XML; none when it is.
  std::optional<source::Error> error;
  /// Whether edits of the document can be applied to the manifest.
  bool isEditable;
};

/// Of the bytes of a file.
StrictText strictTextOfBytes(const std::string& bytes);
/// Of a text in UTF-8, whatever encoding it declares.
StrictText strictTextOfText(const std::string& text);

} // namespace vesk::check

#endif
