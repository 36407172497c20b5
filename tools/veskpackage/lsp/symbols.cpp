// SPDX-License-Identifier: Apache-2.0
#include "lsp/symbols.hpp"

#include "lsp/elements.hpp"

#include <QString>

#include <algorithm>
#include <string_view>

namespace tool::lsp
{

namespace format = vesk::format;
namespace source = vesk::source;

namespace
{
/// The kinds of the protocol.
enum class SymbolKind
{
  File = 1,
  Module = 2,
  Namespace = 3,
  Package = 4,
  Class = 5,
  Property = 7,
  String = 15,
  Boolean = 17,
  Array = 18
};

bool hasName(const format::Element& element)
{
  return std::any_of(element.attributes.begin(), element.attributes.end(),
                     [](const format::Attribute& attribute) { return attribute.isRequired; });
}

SymbolKind kindOf(const format::Element& element)
{
  const bool isText = element.holds == format::Holds::Text ||
                      format::attributeFor(element, format::Role::Key) != nullptr;
  const bool isFile = format::attributeFor(element, format::Role::Value) != nullptr;
  return &element == &format::package()            ? SymbolKind::Package
         : isText                                  ? SymbolKind::String
         : isFile                                  ? SymbolKind::File
         : element.holds == format::Holds::Entries ? SymbolKind::Array
         : !element.children.empty()  ? hasName(element) ? SymbolKind::Class : SymbolKind::Namespace
         : hasName(element)           ? SymbolKind::Module
         : element.attributes.empty() ? SymbolKind::Boolean
                                      : SymbolKind::Property;
}

/// On one line and not too long for an outline.
std::string shortened(std::string_view text)
{
  constexpr int longest = 80;
  constexpr std::size_t mostLookedAt = 1000;
  const std::string_view start = text.substr(0, mostLookedAt);
  QString line = QString::fromUtf8(start.data(), static_cast<int>(start.size())).simplified();
  if (line.size() > longest)
  {
    line.truncate(line.at(longest - 1).isHighSurrogate() ? longest - 1 : longest);
    line += QChar(0x2026);
  }
  return line.toStdString();
}

/// By which people tell an element from others of its name: its first attribute that is needed.
const source::Attribute* namingAttribute(const source::Node& element, const format::Element& known)
{
  const auto named =
      std::find_if(known.attributes.begin(), known.attributes.end(),
                   [&element](const format::Attribute& attribute)
                   {
                     const source::Attribute* const written = element.attribute(attribute.name);
                     return attribute.isRequired && written != nullptr && !written->value().empty();
                   });
  return named == known.attributes.end() ? nullptr : element.attribute(named->name);
}

/// The first name in an element's list of names.
std::string firstNameOf(const source::Node& element)
{
  for (const source::Node& names : element.children())
  {
    for (const source::Node& name : names.children())
    {
      if (names.isElement("names") && name.isElement())
      {
        return textOf(name);
      }
    }
  }
  return {};
}

/// What an outline says behind the name.
std::string detailOf(const source::Node& element, const format::Element& known,
                     const source::Attribute* naming)
{
  if (known.holds == format::Holds::Text)
  {
    return naming != nullptr || known.type != format::Type::Language ? textOf(element) : "";
  }
  std::string detail = firstNameOf(element);
  for (const source::Attribute& attribute : element.attributes())
  {
    const bool isShown = formatOf(known, attribute) != nullptr && &attribute != naming &&
                         (&known != &format::package() || attribute.name() == "version");
    if (isShown && !attribute.value().empty())
    {
      detail.append(detail.empty() ? "" : ", ").append(attribute.value());
    }
  }
  return detail;
}

Json symbolOf(const Manuscript& manuscript, const source::Node& element,
              const format::Element& known)
{
  const source::Attribute* const naming = namingAttribute(element, known);
  const bool isNamedByText = naming == nullptr && known.type == format::Type::Language;
  std::string name = shortened(naming != nullptr ? std::string(naming->value())
                               : isNamedByText   ? textOf(element)
                                                 : std::string());
  name = name.empty() ? std::string(element.name()) : name;
  const std::uint32_t nameBegin = element.range().begin + 1;
  const source::Range selection =
      naming != nullptr
          ? naming->valueRange()
          : source::Range{nameBegin, nameBegin + static_cast<std::uint32_t>(element.name().size())};
  Json symbol = {{"name", name},
                 {"kind", static_cast<int>(kindOf(known))},
                 {"range", manuscript.rangeOf(element.range())},
                 {"selectionRange", manuscript.rangeOf(selection)}};
  const std::string detail = shortened(detailOf(element, known, naming));
  if (!detail.empty())
  {
    symbol["detail"] = detail;
  }
  Json children = Json::array();
  for (const source::Node& child : element.children())
  {
    const format::Element* const childFormat = child.isElement() ? formatOf(child) : nullptr;
    if (childFormat != nullptr)
    {
      children.push_back(symbolOf(manuscript, child, *childFormat));
    }
  }
  if (!children.empty())
  {
    symbol["children"] = std::move(children);
  }
  return symbol;
}

Json hierarchyOf(const Manuscript& manuscript)
{
  const source::Node* const root = manuscript.document().root();
  const format::Element* const known = root != nullptr ? formatOf(*root) : nullptr;
  return known != nullptr ? Json::array({symbolOf(manuscript, *root, *known)}) : Json::array();
}

/// Calls \p visit with each symbol and the name of the one around it.
template <typename Visit>
void visitSymbols(const Json& symbols, const std::string& container, const Visit& visit)
{
  for (const Json& symbol : symbols)
  {
    visit(symbol, container);
    if (const auto children = symbol.find("children"); children != symbol.end())
    {
      visitSymbols(*children, symbol["name"], visit);
    }
  }
}

/// With the detail in the name: editors search in that.
Json informationOf(const Json& symbol, const std::string& container, const std::string& uri)
{
  const std::string detail = symbol.value("detail", std::string());
  return {{"name", symbol["name"].get<std::string>() + (detail.empty() ? "" : ": " + detail)},
          {"kind", symbol["kind"]},
          {"containerName", container},
          {"location", {{"uri", uri}, {"range", symbol["selectionRange"]}}}};
}

bool isListedInWorkspace(const Json& symbol)
{
  const auto kind = static_cast<SymbolKind>(symbol["kind"].get<int>());
  return kind == SymbolKind::Package || kind == SymbolKind::Class || kind == SymbolKind::Module ||
         kind == SymbolKind::File;
}

std::string inLowerCase(std::string text)
{
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c)
                 { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}
} // namespace

Json symbolsOf(const Manuscript& manuscript)
{
  Json hierarchy = hierarchyOf(manuscript);
  if (manuscript.client().supports(
          "/textDocument/documentSymbol/hierarchicalDocumentSymbolSupport"))
  {
    return hierarchy;
  }
  Json flat = Json::array();
  visitSymbols(hierarchy, "",
               [&](const Json& symbol, const std::string& container)
               { flat.push_back(informationOf(symbol, container, manuscript.uri())); });
  return flat;
}

void addSymbolsOf(const Manuscript& manuscript, const std::string& query, Json& found)
{
  constexpr std::size_t most = 1000;
  const std::string wanted = inLowerCase(query);
  visitSymbols(hierarchyOf(manuscript), "",
               [&](const Json& symbol, const std::string& container)
               {
                 Json information = informationOf(symbol, container, manuscript.uri());
                 if (found.size() < most && isListedInWorkspace(symbol) &&
                     inLowerCase(information["name"]).find(wanted) != std::string::npos)
                 {
                   found.push_back(std::move(information));
                 }
               });
}

} // namespace tool::lsp
