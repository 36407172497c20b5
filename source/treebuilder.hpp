// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_TREEBUILDER_HPP
#define SOURCE_TREEBUILDER_HPP

#include "arena.hpp"

#include <source/document.hpp>
#include <source/limits.hpp>

#include <expat.h>

#include <exception>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace vesk::source
{

/// Makes the nodes of a text from what the parser reports of it. Where the parser gives a name or a
/// value as it stands in the text, nodes view it there.
class TreeBuilder
{
public:
  TreeBuilder(std::string_view textInUtf8, std::uint32_t markSize, BlankTexts blankTextsOfTree,
              Arena& arenaOfNodes);

  /// To be called once; the results are there afterwards.
  void parse();
  const Node* first() const { return outermost.firstChild(); }
  const std::optional<Error>& error() const { return found; }

private:
  struct Open
  {
    Node* node;
    Node* lastChild;
  };
  template <auto handle, typename... Arguments>
  static void call(void* builder, Arguments... arguments) noexcept;

  void setHandlers();
  void feed();
  void endOpenNodes(std::uint32_t offset);

  void declaration(const char* version, const char* encoding, int standalone);
  void startDocumentType(const char* name, const char*, const char*, int);
  void declareEntity(const char* name, int isParameter, const char* value, int size, const char*,
                     const char*, const char*, const char*);
  void endDocumentType();
  void startElement(const char* name, const char** attributes);
  void endElement(const char* name);
  void characters(const char* piece, int size);
  void startCData();
  void endCData();
  void comment(const char* value);
  void instruction(const char* name, const char* value);
  void rest(const char* piece, int size);

  Node& add(Kind kind, const Range& range);
  void setName(Node& node, std::size_t begin, std::size_t size);
  static void setValue(Node& node, std::string_view value);
  std::string_view textOf(const Range& range) const;
  /// The value as a part of the text, if it stands there at \p begin, else as a copy.
  std::string_view kept(std::string_view value, std::uint32_t begin);
  void readAttributes(Node& element, const char** values);
  void finishText();
  void leaveOutText();
  /// The value of the text node so far; \p end is where it ends in the text.
  std::string_view valueOfText(std::uint32_t end);
  std::uint32_t beginOfText() const;
  Range current() const;
  void fail(std::string message, const Range& range);
  void failIfMore(const Limit& limit, std::size_t count);

  std::string_view text;
  std::uint32_t base; // where the parser begins, behind a byte order mark
  BlankTexts blankTexts;
  Arena& arena;
  std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser;
  Node outermost;
  std::vector<Open> open;
  bool hasRoot = false;
  std::optional<Error> found;
  std::exception_ptr thrown;

  Node* textNode = nullptr;   // that grows with further pieces
  Node* beforeText = nullptr; // the node before it, in the same parent
  Node* unused = nullptr;     // the next node to be, if one has been left out
  bool isAsItStands = true;   // whether the value of that node is a part of the text
  std::string collected;      // its value where it is not

  Node* documentType = nullptr; // while within it
  std::set<std::string, std::less<>> entities;
  std::size_t declaredCharacters = 0;
  std::size_t referencesInEntities = 0;
  std::size_t broughtIn = 0;
};

/// How far the parser has come.
enum class Stage
{
  BeforeRoot,
  DocumentType,
  Root
};

/// What the parser refused, in words for people. \p open are the elements that are not closed.
Error refusal(std::string_view text, XML_Error code, std::uint32_t offset,
              const std::vector<const Node*>& open, Stage stage);

} // namespace vesk::source

#endif
