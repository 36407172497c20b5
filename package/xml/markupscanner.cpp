// SPDX-License-Identifier: Apache-2.0
#include <package/xml/markupscanner.hpp>

#include <algorithm>

namespace vesk
{
namespace
{
const int lookBehind = 6; // a character and "xmlns"

bool mattersInStartTag(QChar c)
{
  const auto bit = [](char character) { return quint64(1) << character; };
  constexpr quint64 matters = bit('"') | bit('\'') | bit('/') | bit(':') | bit('>');
  return c.unicode() < 64 && ((matters >> c.unicode()) & 1) != 0;
}
} // namespace

int MarkupScanner::scan(const QString& piece)
{
  const QChar* const end = piece.cend();
  const QChar* at = skip(piece.cbegin(), end);
  while (at != end && !isDone())
  {
    state = next(piece, at);
    if (state == State::Refused)
    {
      return static_cast<int>(at - piece.cbegin());
    }
    at = skip(at + 1, end);
  }
  endOfPieceBefore = (endOfPieceBefore + piece.right(lookBehind)).right(lookBehind);
  return -1;
}

/// Passes over what cannot change the present state: nearly all of a document.
const QChar* MarkupScanner::skip(const QChar* at, const QChar* end) const
{
  switch (state)
  {
  case State::Text:
    return std::find(at, end, u'<');
  case State::EndTag:
    return std::find(at, end, u'>');
  case State::StartTag:
    return std::find_if(at, end, mattersInStartTag);
  case State::AttributeValue:
    return std::find(at, end, quote);
  case State::Instruction:
    return std::find(at, end, u'?');
  case State::Comment:
    return std::find(at, end, u'-');
  case State::Cdata:
    return std::find(at, end, u']');
  default:
    return at;
  }
}

MarkupScanner::State MarkupScanner::next(const QString& piece, const QChar* at)
{
  const QChar c = *at;
  switch (state)
  {
  case State::Text:
    return State::LessThan;
  case State::LessThan:
    return afterLessThan(c);
  case State::EndTag:
  case State::StartTagSlash:
    elements.leave();
    return State::Text;
  case State::StartTag:
    return inStartTag(piece, at);
  case State::AttributeValue:
    return State::StartTag;
  case State::Instruction:
    return State::InstructionQuestionMark;
  case State::InstructionQuestionMark:
    return c == u'>' ? State::Text : c == u'?' ? state : State::Instruction;
  case State::ExclamationMark:
    return c == u'-' ? State::CommentStart : c == u'[' ? State::Cdata : State::DocumentType;
  case State::CommentStart:
    return State::Comment;
  case State::Comment:
    return State::CommentDash;
  case State::CommentDash:
    return c == u'-' ? State::CommentDashes : State::Comment;
  case State::CommentDashes:
    return State::Text;
  case State::Cdata:
    return State::CdataBracket;
  case State::CdataBracket:
    return c == u']' ? State::CdataBrackets : State::Cdata;
  case State::CdataBrackets:
    return c == u'>' ? State::Text : c == u']' ? state : State::Cdata;
  case State::DocumentType:
  case State::Refused:
    break;
  }
  return state;
}

MarkupScanner::State MarkupScanner::afterLessThan(QChar c)
{
  if (c == u'/')
  {
    return State::EndTag;
  }
  if (c == u'?')
  {
    return State::Instruction;
  }
  if (c == u'!')
  {
    return State::ExclamationMark;
  }
  rootFound = true;
  return stateUnless(elements.enter(), State::StartTag);
}

MarkupScanner::State MarkupScanner::inStartTag(const QString& piece, const QChar* at)
{
  switch (at->unicode())
  {
  case '"':
  case '\'':
    quote = *at;
    return stateUnless(elements.addAttribute(), State::AttributeValue);
  case ':':
    return isPrefixDeclaration(piece, at) ? stateUnless(elements.addPrefix(), state) : state;
  case '/':
    return State::StartTagSlash;
  default:
    return State::Text;
  }
}

/// Whether the name before \p colon is "xmlns" and not just ends with it: the character in front
/// must be a blank, or the closing quote of the previous attribute.
bool MarkupScanner::isPrefixDeclaration(const QString& piece, const QChar* colon) const
{
  const int at = static_cast<int>(colon - piece.cbegin());
  const QString name = (endOfPieceBefore + piece.leftRef(at).right(lookBehind)).right(lookBehind);
  return name.endsWith(u"xmlns") &&
         (name.front().isSpace() || name.front() == u'"' || name.front() == u'\'');
}

MarkupScanner::State MarkupScanner::stateUnless(const Limit* passed, State wanted)
{
  if (passed == nullptr)
  {
    return wanted;
  }
  reason = QString::fromStdString(passed->refusal());
  return State::Refused;
}

} // namespace vesk
