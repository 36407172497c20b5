// SPDX-License-Identifier: Apache-2.0
#ifndef FORMAT_GENERATE_FILES_HPP
#define FORMAT_GENERATE_FILES_HPP

#include <QString>
#include <QStringList>

#include <stdexcept>

/// What is made from the description of the format, and from the rules of the checker. The same bytes every time.

/// The schema in RELAX NG.
QString relaxNg();

/// The schema in XSD 1.0.
QString xmlSchema();

/// The reference of the format with its tree and tables made anew. They stand between lines
/// `<!-- made: tree -->` or `<!-- made: /path/of/an/element -->` and `<!-- end -->`, the rest is written
/// by hand. A table lists the attributes and children of its element, and those of children that
/// have no table of their own. Throws std::runtime_error for a path that leads to no element.
QString reference(const QString& document);

/// The rules of the checker and their explanations, each below a heading that is its tag.
QString rulesDocument();

/// The fuzzers' dictionary, with the part between `# made: names` and `# end` made anew.
QString dictionary(const QString& document);

/// Replaces parts of a document. A part is between a line that starts with \p begin and ends with
/// \p close, and the next line \p end. It is replaced by what \p make returns for the text between
/// \p begin and \p close. Throws std::runtime_error when the last part has no end.
template <typename Make>
QString withParts(const QString& document, const QString& begin, const QString& close,
                  const QString& end, Make make)
{
  QString result;
  bool isInPart = false;
  for (const QString& line : document.split('\n'))
  {
    isInPart = isInPart && line != end;
    if (!isInPart)
    {
      result += line + '\n';
    }
    if (line.startsWith(begin) && line.endsWith(close))
    {
      isInPart = true;
      result += make(line.mid(begin.size(), line.size() - begin.size() - close.size()));
    }
  }
  if (isInPart)
  {
    throw std::runtime_error("a part that is made has no line " + end.toStdString());
  }
  result.chop(1);
  return result;
}

#endif
