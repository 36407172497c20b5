// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_LSP_WORDING_HPP
#define TOOLS_VESKPACKAGE_LSP_WORDING_HPP

#include "lsp/protocol/json.hpp"

#include <check/manifestcheck.hpp>
#include <format/format.hpp>

#include <string>
#include <vector>

namespace tool::lsp
{

/// What an editor shows as help: paragraphs, in Markdown or as plain text. Whatever the words are, they
/// are shown as they are.
class Wording
{
public:
  explicit Wording(bool canShowMarkdown) : isMarkdown(canShowMarkdown) {}

  /// What an element or attribute means, who reads it, what its absence means, and what it can be.
  void add(const vesk::format::Entry& entry);
  /// What a rule explains.
  void add(const vesk::check::Rule& rule);
  /// A paragraph.
  void add(const std::string& words);

  bool isEmpty() const { return paragraphs.empty(); }
  /// As MarkupContent of the protocol.
  Json toJson() const;

private:
  std::string plain(const std::string& words) const;
  std::string strong(const std::string& words) const;
  std::string literal(const std::string& text) const;

  bool isMarkdown;
  std::vector<std::string> paragraphs;
};

} // namespace tool::lsp

#endif
