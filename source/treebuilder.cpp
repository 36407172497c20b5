// SPDX-License-Identifier: Apache-2.0
#include "treebuilder.hpp"

#include "characters.hpp"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace vesk::source
{
TreeBuilder::TreeBuilder(std::string_view textInUtf8, std::uint32_t markSize,
                         BlankTexts blankTextsOfTree, Arena& arenaOfNodes)
    : text(textInUtf8), base(markSize), blankTexts(blankTextsOfTree), arena(arenaOfNodes),
      parser(XML_ParserCreate("UTF-8"), &XML_ParserFree)
{
  if (!parser)
  {
    throw std::bad_alloc();
  }
  open.push_back({&outermost, nullptr});
  setHandlers();
}

/// Exceptions must not pass through the parser.
template <auto handle, typename... Arguments>
void TreeBuilder::call(void* builder, Arguments... arguments) noexcept
{
  auto& self = *static_cast<TreeBuilder*>(builder);
  if (self.thrown || self.found)
  {
    return; // the parser stops only after what it has at hand
  }
  try
  {
    (self.*handle)(arguments...);
  }
  catch (...)
  {
    self.thrown = std::current_exception();
    XML_StopParser(self.parser.get(), XML_FALSE);
  }
}

void TreeBuilder::setHandlers()
{
  XML_Parser p = parser.get();
  XML_SetUserData(p, this);
  XML_SetXmlDeclHandler(p, &call<&TreeBuilder::declaration>);
  XML_SetDoctypeDeclHandler(p, &call<&TreeBuilder::startDocumentType>,
                            &call<&TreeBuilder::endDocumentType>);
  XML_SetEntityDeclHandler(p, &call<&TreeBuilder::declareEntity>);
  XML_SetElementHandler(p, &call<&TreeBuilder::startElement>, &call<&TreeBuilder::endElement>);
  XML_SetCharacterDataHandler(p, &call<&TreeBuilder::characters>);
  XML_SetCdataSectionHandler(p, &call<&TreeBuilder::startCData>, &call<&TreeBuilder::endCData>);
  XML_SetCommentHandler(p, &call<&TreeBuilder::comment>);
  XML_SetProcessingInstructionHandler(p, &call<&TreeBuilder::instruction>);
  XML_SetDefaultHandler(p, &call<&TreeBuilder::rest>); // so that entities are not expanded
}

void TreeBuilder::parse()
{
  feed();
  if (thrown)
  {
    std::rethrow_exception(thrown);
  }
  const XML_Error code = XML_GetErrorCode(parser.get());
  if (code == XML_ERROR_NO_MEMORY)
  {
    throw std::bad_alloc();
  }
  finishText();
  if (code != XML_ERROR_NONE && !found)
  {
    std::vector<const Node*> elements;
    std::transform(open.begin() + 1, open.end(), std::back_inserter(elements),
                   [](const Open& level) { return level.node; });
    const XML_Index index = std::max<XML_Index>(XML_GetCurrentByteIndex(parser.get()), 0);
    const Stage stage = hasRoot                   ? Stage::Root
                        : documentType != nullptr ? Stage::DocumentType
                                                  : Stage::BeforeRoot;
    found = refusal(text, code, base + static_cast<std::uint32_t>(index), elements, stage);
  }
  if (found)
  {
    endOpenNodes(found->range.begin);
  }
}

/// Those that an error has left without an end reach up to it.
void TreeBuilder::endOpenNodes(std::uint32_t offset)
{
  if (documentType != nullptr)
  {
    documentType->whole.end = std::max(documentType->whole.begin, offset);
  }
  for (auto level = open.begin() + 1; level != open.end(); ++level)
  {
    Node& node = *level->node;
    node.whole.end = std::max(node.inner.begin, offset);
    node.inner.end = node.whole.end;
  }
}

/// In pieces, since the parser copies what it is given. It looks at a token that is not whole again
/// from its beginning when the next piece comes, so pieces grow with what has not been taken.
void TreeBuilder::feed()
{
  constexpr std::size_t leastPiece = 1U << 16U;
  std::size_t fed = base;
  XML_Status status = XML_STATUS_OK;
  do
  {
    const XML_Index taken = XML_GetCurrentByteIndex(parser.get());
    const std::size_t pending =
        fed - base - static_cast<std::size_t>(std::max<XML_Index>(taken, 0));
    const std::size_t size = std::min(std::max(leastPiece, pending), text.size() - fed);
    status = XML_Parse(parser.get(), text.data() + fed, static_cast<int>(size),
                       static_cast<int>(fed + size == text.size()));
    fed += size;
  } while (status == XML_STATUS_OK && fed < text.size());
}

void TreeBuilder::declaration(const char*, const char*, int)
{
  constexpr std::uint32_t begin = 5; // of "<?xml"
  const Range range = current();
  setValue(add(Kind::Declaration, range), textOf({range.begin + begin, range.end - 2}));
}

void TreeBuilder::startDocumentType(const char* name, const char*, const char*, int)
{
  const Node* const before = open.back().lastChild;
  const std::size_t begin = text.find("<!DOCTYPE", before != nullptr ? before->whole.end : base);
  documentType = &add(Kind::DocumentType, {static_cast<std::uint32_t>(begin), 0});
  setName(*documentType, text.find(name, begin + std::strlen("<!DOCTYPE")), std::strlen(name));
}

void TreeBuilder::declareEntity(const char* name, int isParameter, const char* value, int size,
                                const char*, const char*, const char*, const char*)
{
  if (isParameter == 0)
  {
    entities.insert(name);
  }
  failIfMore(limits::entities, entities.size());
  if (value != nullptr)
  {
    const std::string_view declared(value, static_cast<std::size_t>(size));
    declaredCharacters += declared.size();
    referencesInEntities +=
        static_cast<std::size_t>(std::count(declared.begin(), declared.end(), '&'));
    failIfMore(limits::declaredText, declaredCharacters);
    failIfMore(limits::referencesInEntities, referencesInEntities);
  }
}

void TreeBuilder::endDocumentType()
{
  Node& node = *documentType;
  documentType = nullptr;
  node.whole.end = current().end;
  const std::string_view name = node.name();
  const auto nameEnd = static_cast<std::uint32_t>(name.data() + name.size() - text.data());
  setValue(node, textOf({nameEnd, node.whole.end - 1}));
  std::size_t deepest = 0;
  std::size_t depth = 0;
  for (const char c : node.value())
  {
    depth += c == '(' ? 1 : 0;
    depth -= c == ')' && depth > 0 ? 1 : 0;
    deepest = std::max(deepest, depth);
  }
  failIfMore(limits::parentheses, deepest);
}

void TreeBuilder::startElement(const char* name, const char** attributes)
{
  finishText();
  hasRoot = true;
  const Range tag = current();
  Node& element = add(Kind::Element, tag);
  element.inner = {tag.end, tag.end};
  setName(element, tag.begin + 1, std::strlen(name));
  readAttributes(element, attributes);
  open.push_back({&element, nullptr});
  failIfMore(limits::depth, open.size() - 1);
}

void TreeBuilder::endElement(const char*)
{
  finishText();
  Node& element = *open.back().node;
  const Range tag = current();
  element.inner.end = tag.begin;
  element.whole.end = tag.end;
  open.pop_back();
}

void TreeBuilder::characters(const char* piece, int size)
{
  const Range range = current();
  if (textNode == nullptr)
  {
    beforeText = open.back().lastChild;
    textNode = &add(Kind::Text, {range.begin, range.begin});
    isAsItStands = true;
  }
  const std::string_view value(piece, static_cast<std::size_t>(size));
  if (isAsItStands && value != textOf(range))
  {
    collected = textOf({beginOfText(), range.begin});
    isAsItStands = false;
  }
  if (!isAsItStands)
  {
    collected += value;
  }
  textNode->whole.end = range.end;
}

void TreeBuilder::startCData()
{
  finishText();
  textNode = &add(Kind::CData, current());
  isAsItStands = true;
}

void TreeBuilder::endCData()
{
  const Range end = current();
  setValue(*textNode, valueOfText(end.begin));
  textNode->whole.end = end.end;
  textNode = nullptr;
}

void TreeBuilder::comment(const char* value)
{
  constexpr std::uint32_t begin = 4; // of "<!--"
  if (documentType == nullptr)
  {
    finishText();
    const Range range = current();
    setValue(add(Kind::Comment, range), kept(value, range.begin + begin));
  }
}

void TreeBuilder::instruction(const char* name, const char* value)
{
  if (documentType == nullptr)
  {
    finishText();
    const Range range = current();
    Node& node = add(Kind::Instruction, range);
    setName(node, range.begin + 2, std::strlen(name));
    const std::size_t valueBegin = text.find_first_not_of(blanks, range.begin + 2 + node.nameSize);
    setValue(node, kept(value, static_cast<std::uint32_t>(valueBegin)));
  }
}

/// What no other handler takes: blanks outside of elements, the inside of the document type, and
/// references to entities.
void TreeBuilder::rest(const char* piece, int size)
{
  if (documentType != nullptr || open.size() == 1 || *piece != '&')
  {
    return;
  }
  finishText();
  const std::string_view name(piece + 1, static_cast<std::size_t>(size) - 2);
  if (entities.find(name) == entities.end())
  {
    fail("nothing declares the entity \"" + std::string(textOf(current())) + '"', current());
    return;
  }
  Node& node = add(Kind::Reference, current());
  setName(node, node.whole.begin + 1, name.size());
}

Node& TreeBuilder::add(Kind kind, const Range& range)
{
  Node& node = unused != nullptr ? *std::exchange(unused, nullptr) : *arena.make<Node>();
  node.itsKind = kind;
  node.whole = range;
  Open& level = open.back();
  node.itsParent = open.size() > 1 ? level.node : nullptr;
  (level.lastChild == nullptr ? level.node->itsFirstChild : level.lastChild->itsNext) = &node;
  level.lastChild = &node;
  return node;
}

void TreeBuilder::setName(Node& node, std::size_t begin, std::size_t size)
{
  node.nameData = text.data() + begin;
  node.nameSize = static_cast<std::uint32_t>(size);
}

void TreeBuilder::setValue(Node& node, std::string_view value)
{
  node.valueData = value.data();
  node.count = static_cast<std::uint32_t>(value.size());
}

std::string_view TreeBuilder::textOf(const Range& range) const
{
  return text.substr(range.begin, range.size());
}

std::string_view TreeBuilder::kept(std::string_view value, std::uint32_t begin)
{
  const std::string_view standing = text.substr(begin, value.size());
  return standing == value ? standing : arena.copy(value);
}

/// The parser has found the tag to be well-formed, and gives the values, but not where they stand.
void TreeBuilder::readAttributes(Node& element, const char** values)
{
  const auto specified = static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(parser.get())) / 2;
  failIfMore(limits::attributes, specified);
  auto* const attributes = arena.make<Attribute>(specified);
  std::size_t at = element.whole.begin + 1 + element.nameSize;
  for (std::size_t i = 0; i < specified; ++i)
  {
    Attribute& attribute = attributes[i];
    const std::size_t begin = text.find_first_not_of(blanks, at);
    attribute.begin = static_cast<std::uint32_t>(begin);
    attribute.nameData = text.data() + begin;
    attribute.nameSize = static_cast<std::uint32_t>(std::strlen(values[2 * i]));
    const std::size_t quote = text.find_first_of("\"'", begin + attribute.nameSize);
    at = text.find(text[quote], quote + 1) + 1;
    attribute.standing = {static_cast<std::uint32_t>(quote + 1),
                          static_cast<std::uint32_t>(at - 1)};
    const std::string_view value = values[2 * i + 1];
    const std::string_view standing = textOf(attribute.standing);
    const std::string_view itsValue = value == standing ? standing : arena.copy(value);
    attribute.valueData = itsValue.data();
    attribute.valueSize = static_cast<std::uint32_t>(itsValue.size());
    broughtIn += value.size() - std::min(value.size(), standing.size());
  }
  failIfMore(limits::broughtInText, broughtIn);
  element.firstAttribute = attributes;
  element.count = static_cast<std::uint32_t>(specified);
}

void TreeBuilder::finishText()
{
  if (textNode != nullptr)
  {
    setValue(*textNode, valueOfText(textNode->whole.end));
    if (blankTexts == BlankTexts::LeftOut &&
        textNode->value().find_first_not_of(blanks) == std::string_view::npos)
    {
      leaveOutText();
    }
    textNode = nullptr;
  }
}

void TreeBuilder::leaveOutText()
{
  Open& level = open.back();
  (beforeText == nullptr ? level.node->itsFirstChild : beforeText->itsNext) = nullptr;
  level.lastChild = beforeText;
  *textNode = Node();
  unused = textNode;
}

std::uint32_t TreeBuilder::beginOfText() const
{
  const bool isCData = textNode->itsKind == Kind::CData;
  return textNode->whole.begin + (isCData ? static_cast<std::uint32_t>(beginOfCData.size()) : 0);
}

std::string_view TreeBuilder::valueOfText(std::uint32_t end)
{
  return isAsItStands ? textOf({beginOfText(), end}) : arena.copy(collected);
}

Range TreeBuilder::current() const
{
  const auto begin = base + static_cast<std::uint32_t>(XML_GetCurrentByteIndex(parser.get()));
  return {begin, begin + static_cast<std::uint32_t>(XML_GetCurrentByteCount(parser.get()))};
}

void TreeBuilder::fail(std::string message, const Range& range)
{
  found = Error{std::move(message), range};
  XML_StopParser(parser.get(), XML_FALSE);
}

void TreeBuilder::failIfMore(const Limit& limit, std::size_t count)
{
  if (count > static_cast<std::size_t>(limit.most) && !found)
  {
    fail(limit.refusal(), current());
  }
}

} // namespace vesk::source
