// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_MANUSCRIPT_HPP
#define TOOLS_VESKPACKAGE_LSP_MANUSCRIPT_HPP

#include "lsp/protocol/client.hpp"
#include "lsp/protocol/json.hpp"

#include <check/manifestcheck.hpp>
#include <source/document.hpp>
#include <source/edits.hpp>
#include <source/lines.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool::lsp
{

/// A manifest that is open in an editor. What is made of its text is made when it is first asked for,
/// and kept until the text changes. All offsets are bytes of the text in UTF-8, from 0.
class Manuscript
{
public:
  /// \p editor must outlive it.
  Manuscript(const Client& editor, std::string uri, int version, std::string text);
  Manuscript(const Manuscript&) = delete;
  Manuscript& operator=(const Manuscript&) = delete;
  ~Manuscript() = default;

  const Client& client() const { return itsClient; }
  const std::string& uri() const { return itsUri; }
  int version() const { return itsVersion; }
  const std::string& text() const { return itsText; }
  /// Absolute; empty when the URI is not that of a file.
  const std::string& path() const { return itsPath; }
  /// In which it lies, absolute; empty when the URI is not that of a file.
  const std::string& folder() const { return itsFolder; }

  /// The tree of the text, with texts of blanks, whatever encoding is declared. When the text is not
  /// well-formed, the tree of what stands before the error.
  const vesk::source::Document& document() const;
  const vesk::source::Lines& lines() const;
  /// How it is checked; without options it is not.
  const std::optional<vesk::check::Options>& checkOptions() const { return itsOptions; }
  /// What is wrong with it, in document order; nothing where nothing is checked.
  const std::vector<vesk::check::Finding>& findings() const;

  /// Whether it may be a manifest: its root is called so, or nearly so, or is not there yet.
  bool isManifest() const;

  /// The offset of a position of the protocol. One beyond the end of its line is that end, one beyond
  /// the last line the end of the text, and one within a character its beginning. Throws RequestError
  /// for what is no position.
  std::size_t offsetOf(const Json& position) const;
  /// The part of the text that a range of the protocol is; throws as offsetOf(), and also when the
  /// end is before the beginning.
  vesk::source::Range rangeOf(const Json& range) const;

  /// As the protocol has them; an offset beyond the text is its end.
  /// \{
  Json positionOf(std::size_t offset) const;
  Json rangeOf(std::size_t begin, std::size_t end) const;
  Json rangeOf(const vesk::source::Range& range) const { return rangeOf(range.begin, range.end); }
  Json rangeOf(const vesk::check::Finding& finding) const;
  Json textEdit(const vesk::source::Edit& edit) const;
  Json textEdits(const std::vector<vesk::source::Edit>& edits) const; ///< an array
  /// A WorkspaceEdit of this manifest, with its version where the client takes that.
  Json workspaceEdit(const std::vector<vesk::source::Edit>& edits) const;
  /// \}

  /// Makes the changes of a notification `textDocument/didChange`, one after the other. Throws
  /// RequestError when they are not what the protocol has, or the text would become longer than
  /// \p mostBytes; the text is then as it was.
  void change(int version, const Json& contentChanges, std::size_t mostBytes);

  /// How it is checked from now on; without options it is not checked.
  void checkWith(std::optional<vesk::check::Options> options);

  /// Drops what was made of the text; it will be made again.
  void forget();

private:
  Json positionOf(const vesk::check::Position& position) const;
  void setText(std::string text);

  const Client& itsClient;
  const std::string itsUri;
  const std::string itsPath;
  const std::string itsFolder;
  int itsVersion;
  std::string itsText;
  std::optional<vesk::check::Options> itsOptions = vesk::check::Options();

  mutable std::optional<vesk::source::Document> itsDocument;
  mutable std::optional<vesk::source::Lines> itsLines;
  mutable std::optional<std::vector<vesk::check::Finding>> itsFindings;
};

} // namespace tool::lsp

#endif
