// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_MARKUPSCANNER_HPP
#define PACKAGE_XML_MARKUPSCANNER_HPP

#include <package/xml/openelements.hpp>

#include <QString>

namespace vesk
{

/// Follows the markup of a document without a document type, piece by piece and ahead of the
/// parser, and finds where it nests too deep, gives an element too many attributes or declares too
/// many namespace prefixes. Without a document type no entity brings markup, so the text is all that
/// the parser sees. Where the text is not well-formed the scanner may lose its way, but the parser
/// stops there.
class MarkupScanner
{
public:
  explicit MarkupScanner(Namespaces namespaces) : elements(namespaces) {}

  /// Scans the next piece. Gives the index in it of the character that goes beyond a limit, or -1.
  /// What follows that character, or the start of a document type, is not looked at.
  int scan(const QString& piece);

  /// Why scan gave an index.
  const QString& refusal() const { return reason; }

  /// The document has a document type.
  bool foundDocumentType() const { return state == State::DocumentType; }

  /// Neither the root element nor a document type nor a refusal has been reached yet.
  bool isInProlog() const { return !rootFound && !isDone(); }

private:
  enum class State
  {
    Text,
    LessThan,
    EndTag,
    StartTag,
    StartTagSlash,
    AttributeValue,
    Instruction,
    InstructionQuestionMark,
    ExclamationMark,
    CommentStart,
    Comment,
    CommentDash,
    CommentDashes,
    Cdata,
    CdataBracket,
    CdataBrackets,
    DocumentType,
    Refused
  };

  bool isDone() const { return state == State::DocumentType || state == State::Refused; }
  const QChar* skip(const QChar* at, const QChar* end) const;
  State next(const QString& piece, const QChar* at);
  State afterLessThan(QChar c);
  State inStartTag(const QString& piece, const QChar* at);
  bool isPrefixDeclaration(const QString& piece, const QChar* colon) const;
  State stateUnless(const Limit* passed, State wanted);

  State state = State::Text;
  QChar quote;              // around the attribute value at hand
  QString endOfPieceBefore; // long enough to look back at the name that ends in a piece
  OpenElements elements;
  bool rootFound = false;
  QString reason;
};

} // namespace vesk

#endif
