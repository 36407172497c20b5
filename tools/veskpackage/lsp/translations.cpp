// SPDX-License-Identifier: Apache-2.0
#include "lsp/translations.hpp"

#include "lsp/elements.hpp"

#include <algorithm>
#include <set>
#include <string_view>

namespace tool::lsp
{

namespace format = vesk::format;
namespace source = vesk::source;

namespace
{
/// Of the texts in a list; null where it is none of texts in languages.
const format::Attribute* languageKeyOf(const format::Element* list)
{
  const format::Attribute* const key =
      list != nullptr && list->holds == format::Holds::Entries
          ? format::attributeFor(list->children.front(), format::Role::Key)
          : nullptr;
  return key != nullptr && key->type == format::Type::Language ? key : nullptr;
}

std::vector<std::string> listedFor(const source::Node& root, format::Keeps keeps)
{
  const std::string_view section =
      keeps == format::Keeps::DescriptionLanguages ? "descriptionLanguages" : "supportedLanguages";
  std::vector<std::string> listed;
  for (const source::Node& child : root.children())
  {
    for (const source::Node& language : child.children())
    {
      if (child.isElement(section) && language.isElement())
      {
        listed.push_back(textOf(language));
      }
    }
  }
  return listed;
}

bool beginsWith(const std::set<std::string>& languages, const std::string& language)
{
  const auto from = languages.lower_bound(language);
  return from != languages.end() && from->compare(0, language.size(), language) == 0;
}
} // namespace

std::vector<std::string> missingLanguages(const source::Document& document,
                                          const source::Node& list)
{
  const format::Element* const known = formatOf(list);
  const format::Attribute* const key = languageKeyOf(known);
  if (key == nullptr || known->field.keeps == format::Keeps::All)
  {
    return {};
  }
  std::set<std::string> standing;
  for (const source::Node& entry : list.children())
  {
    if (const source::Attribute* const language = entry.attribute(key->name))
    {
      standing.emplace(language->value());
    }
  }
  std::vector<std::string> missing;
  for (const std::string& language : listedFor(*document.root(), known->field.keeps))
  {
    if (!language.empty() && !beginsWith(standing, language))
    {
      standing.insert(language);
      missing.push_back(language);
    }
  }
  return missing;
}

std::vector<source::Edit> additionOf(const std::vector<std::string>& languages,
                                     const source::Document& document, const source::Node& list)
{
  const format::Element& entry = formatOf(list)->children.front();
  const std::string& key = format::attributeFor(entry, format::Role::Key)->name;
  std::vector<source::NewElement> elements;
  for (const std::string& language : languages)
  {
    source::NewElement element;
    element.name = entry.name;
    element.attributes.emplace_back(key, language);
    elements.push_back(std::move(element));
  }
  const source::Node* last = nullptr;
  for (const source::Node& child : list.children())
  {
    last = child.isElement() ? &child : last;
  }
  source::Editor editor(document);
  editor.insert(list, last, elements);
  // With a place to write into. In a value there is no quote like those around it.
  std::vector<source::Edit> edits = editor.edits();
  const std::string_view empty = "\"/>";
  const std::string open = "\"></" + entry.name + '>';
  for (source::Edit& edit : edits)
  {
    for (std::size_t at = edit.text.find(empty); at != std::string::npos;
         at = edit.text.find(empty, at + open.size()))
    {
      edit.text.replace(at, empty.size(), open);
    }
  }
  return edits;
}

} // namespace tool::lsp
