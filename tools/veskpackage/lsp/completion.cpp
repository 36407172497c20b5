// SPDX-License-Identifier: Apache-2.0
#include "lsp/completion.hpp"

#include "lsp/cursor.hpp"
#include "lsp/languagename.hpp"
#include "lsp/languageuses.hpp"
#include "lsp/packagefolder.hpp"
#include "lsp/wording.hpp"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace tool::lsp
{

namespace format = vesk::format;

namespace
{
/// The kinds of the protocol.
enum class ItemKind
{
  Property = 10,
  Value = 12,
  Enum = 13,
  File = 17,
  Folder = 19,
  Class = 7
};

class Completion
{
public:
  Completion(const Manuscript& completed, std::size_t at)
      : manuscript(completed), text(completed.text()), offset(at),
        hasSnippets(
            completed.client().supports("/textDocument/completion/completionItem/snippetSupport")),
        cursor(cursorAt(text, at))
  {}

  Json list()
  {
    switch (cursor.where)
    {
    case Cursor::Where::Content:
      addContent();
      break;
    case Cursor::Where::ElementName:
      addElements(cursor.begin, cursor.end, "");
      break;
    case Cursor::Where::EndTagName:
      addEndTag();
      break;
    case Cursor::Where::AttributeName:
      addAttributes();
      break;
    case Cursor::Where::Value:
      addValues();
      break;
    case Cursor::Where::Nowhere:
      break;
    }
    return {{"isIncomplete", false}, {"items", std::move(items)}};
  }

private:
  /// \p written instead of what stands between two places.
  Json& add(ItemKind kind, const std::string& label, std::size_t begin, std::size_t end,
            const std::string& written, bool isSnippet = false)
  {
    const std::string rank = std::to_string(items.size());
    items.push_back(
        {{"label", label},
         {"kind", static_cast<int>(kind)},
         {"sortText", std::string(4 - std::min<std::size_t>(rank.size(), 4), '0') + rank},
         {"insertTextFormat", isSnippet ? 2 : 1},
         {"textEdit", {{"range", manuscript.rangeOf(begin, end)}, {"newText", written}}}});
    return items.back();
  }

  void document(Json& item, const format::Entry& entry) const
  {
    Wording wording(manuscript.client().supports(
        "/textDocument/completion/completionItem/documentationFormat", "markdown"));
    wording.add(entry);
    item["documentation"] = wording.toJson();
  }

  /// A place in a snippet that is to be filled.
  std::string stop(int number) const
  {
    return hasSnippets ? '$' + std::to_string(number) : std::string();
  }

  void addContent()
  {
    const format::Element* const parent = cursor.parent();
    if (parent != nullptr && parent->holds == format::Holds::Text)
    {
      addText(*parent);
      return;
    }
    // A word that stands there is the beginning of a name.
    const std::string_view before = text.substr(cursor.begin, offset - cursor.begin);
    const std::size_t blank = before.find_last_not_of(" \t\r\n") == std::string_view::npos
                                  ? before.size()
                                  : before.find_last_of(" \t\r\n") + 1;
    addElements(cursor.begin + blank, offset, "<");
  }

  void addElements(std::size_t begin, std::size_t end, const char* opening)
  {
    const bool isWhole = cursor.where == Cursor::Where::Content ||
                         (!cursor.tag.isFinished && cursor.attributes.empty());
    for (const format::Element* const element : possibleElements())
    {
      int stops = 0;
      std::string written = opening + element->name;
      for (const format::Attribute& attribute : element->attributes)
      {
        if (isWhole && attribute.isRequired)
        {
          written.append(" ")
              .append(attribute.name)
              .append("=\"")
              .append(stop(++stops))
              .append("\"");
        }
      }
      const bool isEmpty =
          element->holds == format::Holds::Nothing || element->holds == format::Holds::Presence;
      if (isWhole)
      {
        written.append(isEmpty ? "/>" : ">" + stop(0) + "</" + element->name + '>');
      }
      document(add(isEmpty ? ItemKind::Property : ItemKind::Class, element->name, begin, end,
                   written, hasSnippets && isWhole),
               *element);
    }
  }

  /// The elements that the place can hold: none that may stand there once, and does.
  std::vector<const format::Element*> possibleElements() const
  {
    const bool isRoot = cursor.around.empty();
    const format::Element* const parent = cursor.parent();
    std::set<const format::Element*> standing;
    bool hasRoot = false;
    if (isRoot || parent != nullptr)
    {
      visitChildren(text, parent, isRoot ? 0 : cursor.around.back().contentBegin,
                    [&](const format::Element* child, const Markup& tag)
                    {
                      const bool isOther =
                          cursor.where == Cursor::Where::Content || tag.begin != cursor.tag.begin;
                      hasRoot = hasRoot || isOther;
                      if (isOther && child != nullptr)
                      {
                        standing.insert(child);
                      }
                    });
    }
    std::vector<const format::Element*> possible;
    if (isRoot && !hasRoot)
    {
      possible.push_back(&format::package());
    }
    else if (parent != nullptr)
    {
      for (const format::Element& child : parent->children)
      {
        if (child.isRepeatable || standing.count(&child) == 0)
        {
          possible.push_back(&child);
        }
      }
    }
    return possible;
  }

  void addEndTag()
  {
    if (!cursor.around.empty())
    {
      const std::string name(cursor.around.back().name);
      Json& item = add(ItemKind::Class, name, cursor.begin, cursor.end,
                       name + (cursor.tag.isFinished ? "" : ">"));
      if (cursor.parent() != nullptr)
      {
        document(item, *cursor.parent());
      }
    }
  }

  void addAttributes()
  {
    if (cursor.format == nullptr)
    {
      return;
    }
    std::set<std::string_view> standing;
    for (std::size_t i = 0; i < cursor.attributes.size(); ++i)
    {
      const WrittenAttribute& attribute = cursor.attributes[i];
      if (i != cursor.attribute)
      {
        standing.insert(text.substr(attribute.begin, attribute.nameEnd - attribute.begin));
      }
    }
    const bool isNew = !cursor.attribute || !cursor.attributes[*cursor.attribute].hasValue;
    for (const format::Attribute& attribute : cursor.format->attributes)
    {
      if (standing.count(attribute.name) == 0)
      {
        const std::string value = isNew ? "=\"" + stop(1) + '"' : std::string();
        document(add(ItemKind::Property, attribute.name, cursor.begin, cursor.end,
                     attribute.name + value, hasSnippets && isNew),
                 attribute);
      }
    }
  }

  void addText(const format::Element& element)
  {
    auto [begin, end] = trimmed(text, cursor.begin, cursor.end);
    if (offset < begin || end < offset)
    {
      if (begin != end)
      {
        return; // beside a text that is there
      }
      begin = end = offset;
    }
    const std::size_t listBegin =
        cursor.around.size() > 1 ? cursor.around[cursor.around.size() - 2].contentBegin : 0;
    addValuesOf(element, element, listBegin, {begin, end, "", ""});
  }

  void addValues()
  {
    const format::Attribute* const attribute = cursor.attributeFormat(text);
    if (attribute == nullptr || cursor.around.empty())
    {
      return;
    }
    const WrittenAttribute& written = cursor.attributes[*cursor.attribute];
    std::size_t end = cursor.end;
    // A quote behind a further "=" is one of the next attribute.
    const std::string_view behind = text.substr(offset, end - offset);
    const bool isClosed = written.isClosed && behind.find('=') == std::string_view::npos;
    if (!isClosed)
    {
      end = offset + std::min(behind.find_first_of(" \t\r\n/="), behind.size());
    }
    const std::string quote(1, written.isQuoted ? text[written.valueBegin - 1] : '"');
    addValuesOf(*attribute, *cursor.format, cursor.around.back().contentBegin,
                {cursor.begin, end, written.isQuoted ? "" : quote, isClosed ? "" : quote});
  }

  /// Where a value is written: instead of what stands there, with the quotes that it lacks.
  struct Slot
  {
    std::size_t begin;
    std::size_t end;
    std::string before;
    std::string after;

    std::string filled(const std::string& value) const
    {
      return std::string(before).append(value).append(after);
    }
  };

  /// The values of the text or an attribute of an element in a list.
  void addValuesOf(const format::Entry& entry, const format::Element& element,
                   std::size_t listBegin, const Slot& slot)
  {
    for (const std::string& value : entry.usual)
    {
      add(ItemKind::Enum, value, slot.begin, slot.end, slot.filled(value));
    }
    if (entry.type == format::Type::Language)
    {
      for (const std::string& code : possibleLanguages(element, listBegin, slot.begin))
      {
        Json& item = add(ItemKind::Value, code, slot.begin, slot.end, slot.filled(code));
        const std::string name = languageNameOf(code);
        if (!name.empty())
        {
          item["detail"] = name;
        }
      }
    }
    if (entry.type == format::Type::Path || entry.type == format::Type::PathStem)
    {
      addPaths(entry, slot);
    }
  }

  /// The codes in the manifest but those that the list has, where it may have each once: first those
  /// that are listed, in their order.
  std::vector<std::string> possibleLanguages(const format::Element& element, std::size_t listBegin,
                                             std::size_t begin) const
  {
    constexpr std::size_t most = 1000;
    const std::vector<LanguageUse> uses = languageUsesIn(text);
    std::set<std::string_view> passed;
    for (const LanguageUse& use : uses)
    {
      if (use.listBegin == listBegin && use.begin != begin && hasKeyOfLanguage(element))
      {
        passed.insert(use.code);
      }
    }
    std::vector<std::string> codes;
    for (const bool isListed : {true, false})
    {
      for (const LanguageUse& use : uses)
      {
        const bool isOfList = use.element->several == format::Several::CountOnce;
        const bool canBeCode = use.code.find_first_of("&<>\"'") == std::string_view::npos;
        if (isOfList == isListed && use.begin != begin && canBeCode && codes.size() < most &&
            passed.insert(use.code).second)
        {
          codes.emplace_back(use.code);
        }
      }
    }
    return codes;
  }

  /// The names that can follow the last "/" of what is written of a path.
  void addPaths(const format::Entry& entry, const Slot& slot)
  {
    const std::string_view written = text.substr(slot.begin, offset - slot.begin);
    const std::size_t slash = written.find_last_of('/');
    const std::size_t nameAt = slash == std::string_view::npos ? 0 : slash + 1;
    const std::string_view behind = text.substr(offset, slot.end - offset);
    const std::size_t end = offset + std::min(behind.find('/'), behind.size());
    std::set<std::string> passed;
    // Editors that do not list the kinds they know need not know this one.
    const bool knowsFolders =
        manuscript.client().has("/textDocument/completion/completionItemKind/valueSet");
    for (std::string name : namesIn(manuscript.folder(), written.substr(0, nameAt)))
    {
      const bool isFolder = name.back() == '/';
      if (entry.type == format::Type::PathStem && !isFolder)
      {
        name = name.substr(0, name.rfind('.'));
      }
      if (name.find_first_of("&<\"'\t\r\n") == std::string::npos && passed.insert(name).second)
      {
        const Slot part{slot.begin + nameAt, end, nameAt == 0 ? slot.before : "",
                        end == slot.end && !isFolder ? slot.after : ""};
        add(isFolder && knowsFolders ? ItemKind::Folder : ItemKind::File, name, part.begin,
            part.end, part.filled(name));
      }
    }
  }

  const Manuscript& manuscript;
  const std::string_view text;
  const std::size_t offset;
  const bool hasSnippets;
  const Cursor cursor;
  Json items = Json::array();
};
} // namespace

Json completionAt(const Manuscript& manuscript, std::size_t offset)
{
  return Completion(manuscript, offset).list();
}

} // namespace tool::lsp
