// SPDX-License-Identifier: Apache-2.0
#include <package/xml/documenttype.hpp>
#include <package/xml/openelements.hpp>
#include <package/xml/saxapi.hpp>
#include <package/xml/text.hpp>

#include <QHash>

#include <algorithm>

namespace vesk
{
namespace
{
/// Counts the open parentheses of a content model. A content model contains neither markup nor
/// quotes, so these reset the count; thus the counter need not know where in the document type a
/// character is. In the text of an entity they do not reset it: a content model that begins in the
/// entity may continue after it.
class ParenthesisCounter
{
public:
  /// False when \p c opens one parenthesis too many.
  bool count(QChar c)
  {
    if (c == u'<' || c == u'>' || c == u'"' || c == u'\'')
    {
      open = 0;
    }
    return countInEntity(c);
  }

  bool countInEntity(QChar c)
  {
    if (c == u'(')
    {
      ++open;
    }
    else if (c == u')')
    {
      open = std::max(0, open - 1);
    }
    return open <= limits::parentheses.most;
  }

private:
  int open = 0;
};

/// Watches a parse, and stops it at the first limit by returning false.
class LimitHandler : public QXmlDefaultHandler
{
public:
  explicit LimitHandler(Namespaces namespaces) : elements(namespaces) {}

  /// Watches what the parser reads; false when that goes beyond a limit.
  bool watch(QChar c)
  {
    return !inDocumentType || parentheses.count(c) || refuse(limits::parentheses);
  }

  /// The refusal and its place, unless the parse ended well or for another reason.
  std::optional<LoadError> refusal() const
  {
    return reason.isEmpty() ? std::nullopt
                            : std::optional(LoadError{{}, fromQString(reason), line, column, true});
  }

  bool startElement(const QString&, const QString&, const QString&,
                    const QXmlAttributes& attributes) override
  {
    const Limit* passed = elements.enter();
    for (int i = 0; i < attributes.count() && passed == nullptr; ++i)
    {
      const bool isPrefix = attributes.qName(i).startsWith(u"xmlns:");
      passed = isPrefix ? elements.addPrefix() : nullptr;
      passed = passed == nullptr ? elements.addAttribute() : passed;
    }
    return passed == nullptr || refuse(*passed);
  }

  bool endElement(const QString&, const QString&, const QString&) override
  {
    elements.leave();
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
    // The name of a parameter entity has a "%" in front here, but not in startEntity(); one name
    // cannot be declared as both.
    entityTexts.insert(name.startsWith(u'%') ? name.mid(1) : name, value);
    references += value.count(u'&');
    declaredText += value.size();
    return allow(references, limits::referencesInEntities) &&
           allow(declaredText, limits::declaredText) && allow(++entities, limits::entities);
  }

  bool externalEntityDecl(const QString&, const QString&, const QString&) override
  {
    return allow(++entities, limits::entities);
  }

  bool unparsedEntityDecl(const QString&, const QString&, const QString&, const QString&) override
  {
    return allow(++entities, limits::entities);
  }

  /// Called before the parser replaces a reference by the entity's text.
  bool startEntity(const QString& name) override
  {
    const QString text = entityTexts.value(name);
    broughtIn += text.size();
    if (!allow(broughtIn, limits::broughtInText))
    {
      return false;
    }
    return !inDocumentType ||
           std::all_of(text.cbegin(), text.cend(),
                       [this](QChar c) { return parentheses.countInEntity(c); }) ||
           refuse(limits::parentheses);
  }

  QString errorString() const override { return reason; }

  bool fatalError(const QXmlParseException& exception) override
  {
    line = exception.lineNumber();
    column = exception.columnNumber();
    return false;
  }

private:
  bool allow(int count, const Limit& limit) { return count <= limit.most || refuse(limit); }

  bool refuse(const Limit& limit)
  {
    reason = QString::fromStdString(limit.refusal());
    return false;
  }

  QString reason;
  int line = 0;
  int column = 0;
  bool inDocumentType = false;
  ParenthesisCounter parentheses;
  QHash<QString, QString> entityTexts;
  OpenElements elements;
  int entities = 0;
  int references = 0;
  int declaredText = 0;
  int broughtIn = 0;
};

/// Passes the text to the parser, and each character to the handler as well, since the parser
/// recurses for parentheses in the document type without telling its handlers.
class WatchedSource : public QXmlInputSource
{
public:
  WatchedSource(const QString& text, LimitHandler& watcher) : handler(watcher) { setData(text); }

  QChar next() override
  {
    const QChar c = QXmlInputSource::next();
    return handler.watch(c) ? c : QChar(EndOfDocument);
  }

private:
  LimitHandler& handler;
};
} // namespace

std::optional<LoadError> checkLimitsWithDocumentType(const QString& text, Namespaces namespaces)
{
  LimitHandler handler(namespaces);
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
