// SPDX-License-Identifier: Apache-2.0
#include <package/xml/limits.hpp>
#include <package/xml/markupscanner.hpp>

#include <algorithm>

namespace vesk
{
int MarkupScanner::scan(const QString& piece)
{
  const QChar* const end = piece.cend();
  const QChar* at = skip(piece.cbegin(), end);
  while (at != end && !isDone())
  {
    state = next(*at);
    if (state == State::Refused)
    {
      return static_cast<int>(at - piece.cbegin());
    }
    at = skip(at + 1, end);
  }
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
    return std::find_if(at, end,
                        [](QChar c) { return c == u'"' || c == u'\'' || c == u'/' || c == u'>'; });
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

MarkupScanner::State MarkupScanner::next(QChar c)
{
  switch (state)
  {
  case State::Text:
    return State::LessThan;
  case State::LessThan:
    return afterLessThan(c);
  case State::EndTag:
    --depth;
    return State::Text;
  case State::StartTag:
    return inStartTag(c);
  case State::StartTagSlash:
    --depth;
    return State::Text;
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
  attributes = 0;
  if (++depth > limits::depth)
  {
    return refuse(QStringLiteral("more than %1 elements within each other").arg(limits::depth));
  }
  return State::StartTag;
}

MarkupScanner::State MarkupScanner::inStartTag(QChar c)
{
  if (c == u'"' || c == u'\'')
  {
    if (++attributes > limits::attributes)
    {
      return refuse(
          QStringLiteral("more than %1 attributes on an element").arg(limits::attributes));
    }
    quote = c;
    return State::AttributeValue;
  }
  return c == u'>' ? State::Text : c == u'/' ? State::StartTagSlash : state;
}

MarkupScanner::State MarkupScanner::refuse(const QString& why)
{
  reason = why;
  return State::Refused;
}

} // namespace vesk
