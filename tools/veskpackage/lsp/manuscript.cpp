// SPDX-License-Identifier: Apache-2.0
#include "lsp/manuscript.hpp"

#include "lsp/protocol/errors.hpp"
#include "lsp/protocol/fileuri.hpp"

#include <format/format.hpp>
#include <format/nearest.hpp>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace tool::lsp
{

namespace check = vesk::check;
namespace source = vesk::source;

namespace
{
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool hasMark(const std::string& text)
{
  return text.compare(0, byteOrderMark.size(), byteOrderMark) == 0;
}

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// How many bytes of a line are in front of the one at so many units.
std::size_t bytesBefore(std::string_view line, std::size_t units, PositionEncoding encoding)
{
  std::size_t at = 0;
  std::size_t passed = 0;
  while (at < line.size())
  {
    std::size_t next = at + 1;
    while (next < line.size() && isContinuation(line[next]))
    {
      ++next;
    }
    const std::size_t inUtf16 = next - at > 3 ? 2 : 1;
    passed += encoding == PositionEncoding::Utf8 ? next - at : inUtf16;
    if (passed > units)
    {
      break;
    }
    at = next;
  }
  return at;
}

/// A member of a position, which is not negative.
std::size_t numberIn(const Json& position, const char* name)
{
  const auto number = position.find(name);
  if (number == position.end() || !number->is_number_integer() || *number < 0)
  {
    throw RequestError(ErrorCode::InvalidParams,
                       "a position needs the number " + std::string(name));
  }
  return number->get<std::size_t>();
}

const Json& memberOf(const Json& value, const char* name)
{
  const auto member = value.find(name);
  if (member == value.end())
  {
    throw RequestError(ErrorCode::InvalidParams, std::string(name) + " is missing");
  }
  return *member;
}

/// Empty when there is none. Mostly it stands in the first lines; no more is parsed than is needed.
std::string nameOfRoot(const std::string& text)
{
  constexpr std::size_t first = 1024;
  constexpr std::size_t factor = 16;
  for (std::size_t size = first;; size *= factor)
  {
    const source::Document beginning =
        source::Document::parseText(text.substr(0, size), source::BlankTexts::LeftOut);
    if (beginning.root() != nullptr)
    {
      return std::string(beginning.root()->name());
    }
    if (size >= text.size())
    {
      return {};
    }
  }
}

std::string folderOf(const std::string& path)
{
  return path.empty() ? path : std::filesystem::path(path).parent_path().string();
}

} // namespace

Manuscript::Manuscript(const Client& editor, std::string uri, int version, std::string text)
    : itsClient(editor), itsUri(std::move(uri)), itsPath(pathOf(itsUri).value_or("")),
      itsFolder(folderOf(itsPath)), itsVersion(version), itsText(std::move(text))
{}

const source::Document& Manuscript::document() const
{
  if (!itsDocument)
  {
    itsDocument = source::Document::parseText(itsText);
  }
  return *itsDocument;
}

const source::Lines& Manuscript::lines() const
{
  if (!itsLines)
  {
    itsLines.emplace(itsText);
  }
  return *itsLines;
}

const std::vector<check::Finding>& Manuscript::findings() const
{
  if (!itsFindings)
  {
    itsFindings =
        itsOptions ? check::checkDraft(itsText, *itsOptions) : std::vector<check::Finding>();
  }
  return *itsFindings;
}

bool Manuscript::isManifest() const
{
  const std::string root = nameOfRoot(itsText);
  const std::string& name = vesk::format::package().name;
  return root.empty() || root == name || !vesk::format::nearest(root, {name}).empty();
}

std::size_t Manuscript::offsetOf(const Json& position) const
{
  const std::size_t line = numberIn(position, "line");
  const std::size_t units = numberIn(position, "character");
  if (line >= static_cast<std::size_t>(lines().count()))
  {
    return itsText.size();
  }
  // To an editor that has kept it, a byte order mark is a character.
  const std::size_t begin = line == 0 ? 0 : lines().beginOf(static_cast<int>(line) + 1);
  const std::size_t end = std::min(itsText.find_first_of("\r\n", begin), itsText.size());
  const std::string_view text = std::string_view(itsText).substr(begin, end - begin);
  return begin + bytesBefore(text, units, itsClient.encoding());
}

source::Range Manuscript::rangeOf(const Json& range) const
{
  const std::size_t begin = offsetOf(memberOf(range, "start"));
  const std::size_t end = offsetOf(memberOf(range, "end"));
  if (end < begin)
  {
    throw RequestError(ErrorCode::InvalidParams, "a range that ends before it begins");
  }
  return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

Json Manuscript::positionOf(std::size_t offset) const
{
  const source::Place place = lines().placeOf(offset);
  const bool isUtf8 = itsClient.encoding() == PositionEncoding::Utf8;
  auto character = static_cast<std::size_t>(place.utf16Column) - 1;
  if (isUtf8)
  {
    const std::size_t begin = lines().beginOf(place.line);
    character = std::clamp(offset, begin, itsText.size()) - begin;
  }
  if (place.line == 1 && offset > 0 && hasMark(itsText))
  {
    character += isUtf8 ? byteOrderMark.size() : 1;
  }
  return {{"line", place.line - 1}, {"character", character}};
}

Json Manuscript::rangeOf(std::size_t begin, std::size_t end) const
{
  return {{"start", positionOf(begin)}, {"end", positionOf(end)}};
}

Json Manuscript::rangeOf(const check::Finding& finding) const
{
  const Json begin = positionOf(finding.begin);
  const Json end = positionOf(finding.end);
  return {{"start", begin}, {"end", end}};
}

Json Manuscript::positionOf(const check::Position& position) const
{
  if (position.line == 0)
  {
    return positionOf(0);
  }
  const int column = std::max(position.utf16Column, 1);
  if (itsClient.encoding() == PositionEncoding::Utf8)
  {
    // The place may be that of a reader, who counts lines and columns only.
    const auto units = static_cast<std::size_t>(column) - 1;
    const std::string_view line = lines().line(position.line);
    return positionOf(lines().beginOf(position.line) +
                      bytesBefore(line, units, PositionEncoding::Utf16));
  }
  const int mark = position.line == 1 && hasMark(itsText) ? 1 : 0;
  return {{"line", position.line - 1}, {"character", column - 1 + mark}};
}

Json Manuscript::textEdit(const source::Edit& edit) const
{
  const std::string_view lineEnd = source::charactersOf(document().lineEnd());
  std::string text;
  for (const char c : edit.text)
  {
    text += c == '\n' ? lineEnd : std::string_view(&c, 1);
  }
  return {{"range", rangeOf(edit.range)}, {"newText", std::move(text)}};
}

Json Manuscript::textEdits(const std::vector<source::Edit>& edits) const
{
  Json result = Json::array();
  for (const source::Edit& edit : edits)
  {
    result.push_back(textEdit(edit));
  }
  return result;
}

Json Manuscript::workspaceEdit(const std::vector<source::Edit>& edits) const
{
  if (!itsClient.supports("/workspace/workspaceEdit/documentChanges"))
  {
    return {{"changes", {{itsUri, textEdits(edits)}}}};
  }
  const Json document = {{"uri", itsUri}, {"version", itsVersion}};
  return {{"documentChanges",
           Json::array({{{"textDocument", document}, {"edits", textEdits(edits)}}})}};
}

void Manuscript::change(int version, const Json& contentChanges, std::size_t mostBytes)
{
  if (!contentChanges.is_array())
  {
    throw RequestError(ErrorCode::InvalidParams, "contentChanges is no array");
  }
  std::string before = itsText;
  try
  {
    for (const Json& change : contentChanges)
    {
      const Json& text = memberOf(change, "text");
      if (!text.is_string())
      {
        throw RequestError(ErrorCode::InvalidParams, "text is no string");
      }
      const auto& written = text.get_ref<const std::string&>();
      const auto range = change.find("range");
      const source::Range replaced =
          range != change.end() ? rangeOf(*range)
                                : source::Range{0, static_cast<std::uint32_t>(itsText.size())};
      if (itsText.size() - replaced.size() + written.size() > mostBytes)
      {
        throw RequestError(ErrorCode::RequestFailed, "the text is too long");
      }
      std::string changed = std::move(itsText);
      changed.replace(replaced.begin, replaced.size(), written);
      setText(std::move(changed));
    }
  }
  catch (...)
  {
    setText(std::move(before));
    throw;
  }
  itsVersion = version;
}

void Manuscript::checkWith(std::optional<check::Options> options)
{
  itsOptions = std::move(options);
  itsFindings.reset();
}

void Manuscript::setText(std::string text)
{
  itsText = std::move(text);
  forget();
}

void Manuscript::forget()
{
  itsDocument.reset();
  itsLines.reset();
  itsFindings.reset();
}

} // namespace tool::lsp
