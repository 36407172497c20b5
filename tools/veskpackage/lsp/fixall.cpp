// SPDX-License-Identifier: Apache-2.0
#include "lsp/fixall.hpp"

#include <check/fixing.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace tool::lsp
{

namespace check = vesk::check;
namespace source = vesk::source;

namespace
{
constexpr int mostRounds = 16; // faults hide others no deeper than the format nests

std::vector<source::Edit> mendsOf(const std::vector<check::Finding>& findings)
{
  std::vector<source::Edit> edits;
  for (const check::Finding* const finding : check::mendableAtOnce(findings))
  {
    edits.insert(edits.end(), finding->mend->edits.begin(), finding->mend->edits.end());
  }
  return edits;
}

/// What differs, as one edit; none where that would change ends of lines, as in a text that has several
/// kinds of them.
std::optional<source::Edit> difference(const source::Document& before, const std::string& after)
{
  const std::string_view text = before.text();
  const auto isWithin = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  const std::size_t shorter = std::min(text.size(), after.size());
  std::size_t begin = static_cast<std::size_t>(
      std::mismatch(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(shorter),
                    after.begin())
          .first -
      text.begin());
  // No character and no line end is cut.
  while (begin > 0 && (begin == text.size() || isWithin(text[begin]) || text[begin] == '\n'))
  {
    --begin;
  }
  std::size_t behind = 0;
  while (behind < shorter - begin &&
         text[text.size() - behind - 1] == after[after.size() - behind - 1])
  {
    ++behind;
  }
  while (behind > 0 && (isWithin(text[text.size() - behind]) || text[text.size() - behind] == '\n'))
  {
    --behind;
  }
  const std::string written = after.substr(begin, after.size() - behind - begin);
  std::string lines;
  for (std::size_t i = 0; i < written.size(); ++i)
  {
    const bool isCrLf =
        before.lineEnd() == source::LineEnd::CrLf && written.compare(i, 2, "\r\n") == 0;
    const bool isCr = before.lineEnd() == source::LineEnd::Cr && written[i] == '\r';
    if ((written[i] == '\r' && !isCrLf && !isCr) ||
        (written[i] == '\n' && before.lineEnd() != source::LineEnd::Lf))
    {
      return std::nullopt;
    }
    lines += isCrLf || isCr ? '\n' : written[i];
    i += isCrLf ? 1 : 0;
  }
  return source::Edit{
      {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(text.size() - behind)},
      std::move(lines)};
}
} // namespace

std::vector<source::Edit> fixAll(const Manuscript& manuscript)
{
  const std::vector<source::Edit> first = mendsOf(manuscript.findings());
  std::string text = manuscript.text();
  std::vector<source::Edit> edits = first;
  int rounds = 0;
  for (; !edits.empty() && rounds < mostRounds; ++rounds)
  {
    text = source::apply(source::Document::parseText(std::move(text)), std::move(edits));
    edits = mendsOf(check::checkText(text, *manuscript.checkOptions()));
  }
  if (rounds <= 1)
  {
    return first;
  }
  const std::optional<source::Edit> whole = difference(manuscript.document(), text);
  return whole ? std::vector{*whole} : first;
}

} // namespace tool::lsp
