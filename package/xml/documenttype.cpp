// SPDX-License-Identifier: Apache-2.0
#include <package/xml/documenttype.hpp>
#include <package/xml/limits.hpp>
#include <package/xml/saxapi.hpp>

#include <QHash>

#include <algorithm>

namespace vesk
{
namespace
{
/// Counts the open parentheses of a content model. Such a model holds neither markup nor quotes, so
/// they start the count anew, and it need not be known where in the document type a character
/// stands.
class ParenthesisCounter
{
public:
  /// False when \p c opens one parenthesis too many.
  bool accept(QChar c)
  {
    switch (c.unicode())
    {
    case '(':
      return ++open <= limits::parentheses;
    case ')':
      open = std::max(0, open - 1);
      return true;
    case '<':
    case '>':
    case '"':
    case '\'':
      open = 0;
      return true;
    default:
      return true;
    }
  }

private:
  int open = 0;
};

/// Watches a parse, and stops it at the first limit by giving false.
class LimitHandler : public QXmlDefaultHandler
{
public:
  /// A character of the document type; false when it goes beyond a limit.
  bool acceptsInDocumentType(QChar c)
  {
    return !inDocumentType || parentheses.accept(c) || refuseParentheses();
  }

  /// The refusal and its place, unless the parse ended well or for another reason.
  std::optional<SyntaxError> refusal() const
  {
    return reason.isEmpty() ? std::nullopt : std::optional(SyntaxError{reason, line, column});
  }

  bool startElement(const QString&, const QString&, const QString&,
                    const QXmlAttributes& attributes) override
  {
    if (++depth > limits::depth)
    {
      return refuse("more than %1 elements within each other", limits::depth);
    }
    if (attributes.count() > limits::attributes)
    {
      return refuse("more than %1 attributes on an element", limits::attributes);
    }
    return true;
  }

  bool endElement(const QString&, const QString&, const QString&) override
  {
    --depth;
    return true;
  }

  bool startDTD(const QString&, const QString&, const QString&) override
  {
    inDocumentType = true;
    return true;
  }

  bool endDTD() override
  {
    inDocumentType = false;
    return true;
  }

  bool internalEntityDecl(const QString& name, const QString& value) override
  {
    // Parameter entities come with a "%" in front here, but not when they are brought in; one name
    // cannot be declared as both.
    entityTexts.insert(name.startsWith(u'%') ? name.mid(1) : name, value);
    references += value.count(u'&');
    declaredText += value.size();
    if (references > limits::referencesInEntities)
    {
      return refuse("more than %1 references in entities", limits::referencesInEntities);
    }
    if (declaredText > limits::entityText)
    {
      return refuse("more than %1 characters in entities", limits::entityText);
    }
    return countEntity();
  }

  bool externalEntityDecl(const QString&, const QString&, const QString&) override
  {
    return countEntity();
  }

  bool unparsedEntityDecl(const QString&, const QString&, const QString&, const QString&) override
  {
    return countEntity();
  }

  /// An entity is about to be read in the place of a reference to it.
  bool startEntity(const QString& name) override
  {
    const QString text = entityTexts.value(name);
    broughtIn += text.size();
    if (broughtIn > limits::entityText)
    {
      return refuse("more than %1 characters brought in by entities", limits::entityText);
    }
    return !inDocumentType ||
           std::all_of(text.cbegin(), text.cend(),
                       [this](QChar c) { return parentheses.accept(c); }) ||
           refuseParentheses();
  }

  QString errorString() const override { return reason; }

  bool fatalError(const QXmlParseException& exception) override
  {
    line = exception.lineNumber();
    column = exception.columnNumber();
    return false;
  }

private:
  bool countEntity()
  {
    return ++entities <= limits::entities ||
           refuse("more than %1 declared entities", limits::entities);
  }

  bool refuseParentheses()
  {
    return refuse("more than %1 parentheses within each other", limits::parentheses);
  }

  bool refuse(const char* why, int limit)
  {
    reason = QString::fromLatin1(why).arg(limit);
    return false;
  }

  QString reason;
  int line = 0;
  int column = 0;
  bool inDocumentType = false;
  ParenthesisCounter parentheses;
  QHash<QString, QString> entityTexts;
  int depth = 0;
  int entities = 0;
  int references = 0;
  int declaredText = 0;
  int broughtIn = 0;
};

/// Gives the text to the parser and shows the handler what stands in the document type: the parser
/// recurses for parentheses without telling its handlers.
class WatchedSource : public QXmlInputSource
{
public:
  WatchedSource(const QString& text, LimitHandler& watcher) : handler(watcher) { setData(text); }

  QChar next() override
  {
    const QChar c = QXmlInputSource::next();
    return handler.acceptsInDocumentType(c) ? c : QChar(EndOfDocument);
  }

private:
  LimitHandler& handler;
};
} // namespace

std::optional<SyntaxError> checkLimitsWithDocumentType(const QString& text)
{
  LimitHandler handler;
  WatchedSource source(text, handler);
  QXmlSimpleReader reader;
  reader.setFeature(QStringLiteral("http://xml.org/sax/features/namespaces"), false);
  reader.setFeature(QStringLiteral("http://xml.org/sax/features/namespace-prefixes"), true);
  reader.setFeature(QStringLiteral("http://trolltech.com/xml/features/report-start-end-entity"),
                    true);
  reader.setContentHandler(&handler);
  reader.setErrorHandler(&handler);
  reader.setDTDHandler(&handler);
  reader.setLexicalHandler(&handler);
  reader.setDeclHandler(&handler);
  reader.parse(&source);
  return handler.refusal();
}

} // namespace vesk
