// SPDX-License-Identifier: Apache-2.0
#include "lsp/languageuses.hpp"

#include "lsp/cursor.hpp"

#include <tuple>

namespace tool::lsp
{

namespace format = vesk::format;

namespace
{
class Collector
{
public:
  explicit Collector(std::string_view manifest) : text(manifest), elements(manifest) {}

  std::vector<LanguageUse> collect()
  {
    Markups pieces(text);
    while (const std::optional<Markup> piece = pieces.next())
    {
      if (piece->kind == Markup::Kind::StartTag || piece->kind == Markup::Kind::EmptyTag)
      {
        takeAttributes(*piece);
      }
      else if (piece->kind == Markup::Kind::Text && !elements.path().empty())
      {
        takeText(*piece);
      }
      elements.pass(*piece);
    }
    return std::move(uses);
  }

private:
  void takeAttributes(const Markup& tag)
  {
    const format::Element* const element = elements.formatOf(tag);
    const auto& path = elements.path();
    if (element == nullptr || path.empty())
    {
      return;
    }
    for (const format::Attribute& attribute : element->attributes)
    {
      if (attribute.type == format::Type::Language)
      {
        for (const WrittenAttribute& written : attributesIn(text, tag))
        {
          const std::string_view name = text.substr(written.begin, written.nameEnd - written.begin);
          if (name == attribute.name)
          {
            take(*element, written.valueBegin, written.valueEnd, path.back());
          }
        }
      }
    }
  }

  void takeText(const Markup& piece)
  {
    const auto& path = elements.path();
    const format::Element* const element = path.back().format;
    // A text that a comment cuts is none of its pieces.
    const bool isWhole =
        piece.begin == path.back().contentBegin && text.substr(piece.end, 2) != "<!";
    if (element != nullptr && element->type == format::Type::Language && path.size() > 1 && isWhole)
    {
      take(*element, piece.begin, piece.end, path[path.size() - 2]);
    }
  }

  void take(const format::Element& element, std::size_t begin, std::size_t end,
            const OpenElements::Open& list)
  {
    std::tie(begin, end) = trimmed(text, begin, end);
    if (begin != end)
    {
      uses.push_back(
          {text.substr(begin, end - begin), &element, begin, list.name, list.contentBegin});
    }
  }

  std::string_view text;
  OpenElements elements;
  std::vector<LanguageUse> uses;
};
} // namespace

std::vector<LanguageUse> languageUsesIn(std::string_view text) { return Collector(text).collect(); }

bool hasKeyOfLanguage(const format::Element& element)
{
  return element.several == format::Several::LastOfKeyCounts ||
         element.several == format::Several::CountOnce;
}

} // namespace tool::lsp
